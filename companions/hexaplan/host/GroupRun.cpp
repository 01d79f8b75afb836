#include "hexaplan/host/GroupRun.h"

#include <algorithm>
#include <map>

#include "hexaplan/host/HostVocabulary.h"
#include "platform/System.h"
#include "quillmar/CalculationHost.h"

namespace hexaplan {

namespace {

constexpr char kName[] = "Name";
constexpr char kMember[] = "Member";
constexpr char kBoltedJoint[] = "THRJOIN";
constexpr int kGroupType = 11;

using quillmar::platform::EqualsNoCase;

bool StandsInCad(const ProtocolRecord& group) {
  return group.KeyWord(kCadSection, kFromCad) == "1" || group.KeyWord(kCadSection, kDrawn) == "1";
}

const std::string* FieldOf(const Order& order, const std::string& name) {
  const auto found = std::find_if(order.fields.begin(), order.fields.end(),
                                  [&](const auto& each) { return EqualsNoCase(each.first, name); });
  return found != order.fields.end() ? &found->second : nullptr;
}

// Where a member takes a part of the pair with it, both are listed; each once.
void AddOnce(std::vector<std::string>& list, const std::string& id) {
  if (std::find(list.begin(), list.end(), id) == list.end()) list.push_back(id);
}

}  // namespace

bool GroupRun::IsGroup(const std::string& protocolId) const {
  const auto record = ProtocolRecord::Open(store, protocolId);
  return record && EqualsNoCase(record->DataFileType(), kGroupDataFile);
}

RunResult GroupRun::Run(const std::string& protocolId) const {
  RunResult result;
  auto group = ProtocolRecord::Open(store, protocolId);
  if (!group) return result;
  result.shown = true;
  const auto order = calculations.Ordered().Find(kGroupDataFile, protocolId);
  if (!order) return result;
  result = Calculate(*group, *order);
  if (result.calculated) {
    std::string list;
    for (const std::string& id : result.protocols) list += (list.empty() ? "" : ",") + id;
    calculations.Ordered().AnswerCalculated(*order, result.code, list);
    result.protocols = {protocolId};
  } else {
    calculations.Ordered().AnswerRefused(*order, result.message);
  }
  return result;
}

std::vector<GroupRun::Member> GroupRun::MembersOf(const Order& order) {
  std::vector<Member> members;
  for (int number = 1;; ++number) {
    const std::string key = kMember + std::to_string(number);
    const std::string* dataFile = FieldOf(order, key);
    if (dataFile == nullptr) return members;
    Member& member = members.emplace_back();
    member.dataFile = *dataFile;
    const std::string prefix = key + ".";
    for (const auto& [name, value] : order.fields) {
      if (name.size() > prefix.size() && EqualsNoCase(name.substr(0, prefix.size()), prefix)) {
        member.fields.fields.emplace_back(name.substr(prefix.size()), value);
      }
    }
  }
}

// The answer names the group first, then its members. Refused members leave the group as it was;
// what was calculated before them stays calculated.
RunResult GroupRun::Calculate(ProtocolRecord& group, const Order& order) const {
  RunResult result;
  result.shown = true;
  const std::vector<Member> members = MembersOf(order);
  const std::vector<std::string> before = group.Members();
  std::vector<std::string> after;
  // Parts beyond the first of a member follow it in the list and belong to no order of their own.
  std::size_t place = 0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (FindCalculation(members[i].dataFile) == nullptr) {
      const std::string field = kMember + std::to_string(i + 1);
      result.message =
          "Field \"" + field + "\": there is no calculation \"" + members[i].dataFile + "\".";
      return result;
    }
    const bool known = place < before.size();
    const std::string id = known ? before[place] : NewMember(group, members[i]);
    std::string refusal;
    const auto parts = CalculateMember(id, members[i], refusal);
    if (parts.empty()) {
      if (!known) store.Erase(id);
      result.message = "Member " + std::to_string(i + 1) + ": " + refusal;
      return result;
    }
    for (const std::string& part : parts) AddOnce(after, part);
    place += parts.size();
  }
  if (after.empty()) {
    result.message = "The group has no members.";
    return result;
  }
  std::string memberOrder;
  for (const std::string& id : after) {
    if (std::find(before.begin(), before.end(), id) == before.end()) group.AddMember(id);
    memberOrder += (memberOrder.empty() ? "" : ";") + id;
  }
  result.code = StandsInCad(group) ? QM_CALLBACK_RECALCULATED : QM_CALLBACK_NEW_PART;
  group.PutKeyWord(kMemberOrderSection, kMemberOrder, memberOrder);
  group.SetVersion(2, 0);
  group.PutKeyWord("Calc", "CalcName", "Group");
  group.PutGlobal("TypeOfPart", std::to_string(kGroupType));
  if (const std::string* name = FieldOf(order, kName)) {
    group.PutKeyWord(kGroupSection, kGroupName, *name);
    group.PutGlobal("Caption", *name);
  }
  group.PutKeyWord(kCadSection, kRecalculate, "0");
  group.PutKeyWord(kCadSection, kDoNotErase, "1");
  result.calculated = group.Close();
  if (!result.calculated) result.message = "The group cannot be stored.";
  result.protocols = {group.Id()};
  result.protocols.insert(result.protocols.end(), after.begin(), after.end());
  return result;
}

std::string GroupRun::NewMember(const ProtocolRecord& group, const Member& member) const {
  auto record = ProtocolRecord::CreateNew(store);
  if (!record) return {};
  for (const char* item : {"Standard", "Language"}) record->PutGlobal(item, group.Global(item));
  record->PutKeyWord(kMainSection, kDataFile, "KEELDATA|" + member.dataFile);
  return record->Close() ? record->Id() : std::string();
}

std::vector<std::string> GroupRun::CalculateMember(const std::string& id, const Member& member,
                                                   std::string& refusal) const {
  const RunResult run = calculations.RunMember(id, member.fields);
  if (!run.calculated) {
    refusal = run.message;
    return {};
  }
  if (EqualsNoCase(member.dataFile, kBoltedJoint)) {
    for (const std::string& part : run.protocols) {
      auto record = ProtocolRecord::Open(store, part);
      if (record) record->PutKeyWord(kJointSection, kBolt, part);
    }
  }
  return run.protocols;
}

}  // namespace hexaplan
