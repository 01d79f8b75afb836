#include "parts/VXNamedProt.h"

#include <algorithm>
#include <iterator>

#include "parts/ParameterLists.h"
#include "parts/PartFactory.h"
#include "parts/PhysicalProperties.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kBoltedJointFiles[] = {"KeelData|THRJOIN", "THRJOIN"};
constexpr int kAssembly = 10;

// CADs, told by the extension of their part files, that go on by themselves behind a new last
// member of these kinds: the user places it, and nothing may follow before that is done.
struct EarlyEnd {
  const char* extension;
  int typeOfPart;
};
constexpr EarlyEnd kEarlyEnds[] = {{"kpz", 2}, {"kpz", 7}, {"kpz", 8},
                                   {"kpz", 9}, {"par", 7}, {"par", 8}};

bool IsBoltedJoint(const std::string& dataFile) {
  return std::any_of(std::begin(kBoltedJointFiles), std::end(kBoltedJointFiles),
                     [&](const char* file) { return platform::EqualsNoCase(dataFile, file); });
}

int ReadCadxInt(VXProtocol& protocol, const char* keyword) {
  int value = 0;
  protocol.GetKeyWordInt(section::kCadx, keyword, value);
  return value;
}

bool HasModelOfLastInsert(VXProtocol& member) {
  std::string modelId;
  member.GetModelID(modelId);
  std::string oldModelId;
  member.GetGlobalData(global::kOldModelId, oldModelId);
  return modelId == oldModelId;
}

}  // namespace

bool VXNamedProt::CreatePartFile() { return true; }
bool VXNamedProt::WantsDescription() { return false; }

bool VXNamedProt::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  return InsertIntoCad(connection, pairs);
}

bool VXNamedProt::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  int updateAll = 0;
  if (protocol.GetKeyWordInt(section::kHexaplan, keyword::kUpdateAll, updateAll) &&
      updateAll != 0) {
    return services.driver.ConnectProtocol(protocol.GetProtocolID().c_str(), connection.c_str()) !=
           0;
  }
  Members members;
  protocol.GetProtocolList(members);
  if (services.driver.GroupInsertStart) services.driver.GroupInsertStart();
  ShowParts(members);
  std::string name;
  std::string groupConnection;
  const bool named = NameWanted(name, groupConnection);
  if (IsOptimizing()) members.clear();
  MemberResult last;
  for (const std::string& memberId : members) last = DriveMember(memberId);
  if (EndsEarly(last)) return true;
  if (named) PutNamedProtocol(name, groupConnection);
  if (services.driver.GroupInsertEnd) services.driver.GroupInsertEnd();
  return loop == 0 || ReadMembersBack(members);
}

// --- before the members ---

// The CAD shows the parts of an assembly as the calculation wants them before anything changes.
void VXNamedProt::ShowParts(const Members& members) {
  for (const std::string& memberId : members) {
    if (!IsMember(memberId)) continue;
    VXProtocol member(services.protocols, memberId);
    int type = 0;
    if (member.IsReady() && member.GetTypeOfPart(type) && type == kAssembly) {
      SendPartsVisibility(services, member);
    }
  }
}

// Opening would make anew what is gone, and a group that leads back to itself has no end.
bool VXNamedProt::IsMember(const std::string& memberId) const {
  return !VXProtocol::IsMissing(services.protocols, memberId) && !IsDrivenFurtherUp(memberId);
}

// Whether the group itself is put into the CAD.
bool VXNamedProt::NameWanted(std::string& name, std::string& connection) {
  return protocol.GetKeyWord(section::kSpProp, keyword::kName, name) &&
         services.driver.InsertNamedProtocol && services.driver.ChangeNamedProtocol &&
         protocol.MakeReference(connection, Markers::Standard);
}

bool VXNamedProt::IsOptimizing() { return ReadCadxInt(protocol, keyword::kOptim) != 0; }

// --- one member ---

VXNamedProt::MemberResult VXNamedProt::DriveMember(const std::string& memberId) {
  MemberResult result;
  if (!IsMember(memberId)) return result;
  VXProtocol member(services.protocols, memberId);
  if (!member.IsReady()) return result;
  ConvertProtocol(services.session, services.converter.get(), member, 0);
  if (HandOverBoltedJoint(member)) return result;
  auto part = CreatePartForProtocol(services, member);
  if (!part) return result;
  Drive(*part);
  member.GetTypeOfPart(result.typeOfPart);
  const bool fromMemberCad = ReadCadxInt(member, keyword::kFromCad) == 1;
  if (loop != 0) member.PutCadx(keyword::kLoop, "1");
  result.outcome = Outcome::Failed;
  if (PerformOn(member, *part, fromMemberCad)) {
    member.PutCadx(keyword::kFromCad, "1");
    result.outcome = fromMemberCad ? Outcome::Updated : Outcome::Inserted;
  }
  part.reset();
  LeaveMember(member);
  return result;
}

// A joint that is not in the CAD yet is the business of the bolted-connection library.
bool VXNamedProt::HandOverBoltedJoint(VXProtocol& member) {
  std::string dataFile;
  member.GetKeyWord(section::kMain, keyword::kDataFile, dataFile);
  if (!IsBoltedJoint(dataFile) || services.session.groupManager) return false;
  std::string bolt;
  member.GetKeyWord(section::kMcwParts, keyword::kBolt, bolt);
  if (!bolt.empty()) return false;
  const std::string memberId = member.GetProtocolID();
  member.Close();
  services.bolted.InsertBoltedConnection(memberId);
  return true;
}

bool VXNamedProt::PerformOn(VXProtocol& member, VXPart& part, bool fromMemberCad) {
  return HasModelOfLastInsert(member) && fromMemberCad ? part.Update()
                                                       : part.Insert(InsertMode::Plain);
}

// Members are working copies: the CAD object carries what it needs of them. Those that became 2D
// objects are in the older layout now, which is not for the host.
void VXNamedProt::LeaveMember(VXProtocol& member) {
  ConvertProtocol(services.session, services.converter.get(), member, 0);
  services.host.AnnounceProtocol(member.GetProtocolID());
  if (services.session.groupManager || ReadCadxInt(member, keyword::kDoNotErase) == 1) return;
  if (loop == 0) {
    member.Erase();
  } else {
    member.PutCadx(keyword::kOptim, "0");
  }
}

// --- behind the members ---

bool VXNamedProt::EndsEarly(const MemberResult& last) const {
  return last.outcome == Outcome::Inserted &&
         std::any_of(std::begin(kEarlyEnds), std::end(kEarlyEnds), [&](const EarlyEnd& end) {
           return platform::EqualsNoCase(services.session.modelExt, end.extension) &&
                  last.typeOfPart == end.typeOfPart;
         });
}

void VXNamedProt::PutNamedProtocol(const std::string& name, const std::string& connection) {
  const char* id = protocol.GetProtocolID().c_str();
  if (fromCad == 1) {
    services.driver.ChangeNamedProtocol(id, name.c_str(), connection.c_str());
  } else {
    services.driver.InsertNamedProtocol(id, name.c_str(), connection.c_str());
  }
}

bool VXNamedProt::ReadMembersBack(const Members& members) {
  return std::all_of(members.begin(), members.end(),
                     [&](const std::string& memberId) { return ReadMemberBack(memberId); });
}

// What has no part object was not inserted either and has nothing to tell.
bool VXNamedProt::ReadMemberBack(const std::string& memberId) {
  if (!IsMember(memberId)) return true;
  VXProtocol member(services.protocols, memberId);
  if (!member.IsReady()) return true;
  auto part = CreatePartForProtocol(services, member);
  if (!part) return true;
  if (!part->ReadBackFromCad()) return Fail("Cannot get extended information", QM_HERE);
  part.reset();
  member.PutCadx(keyword::kFromCad, "1");
  ReadPhysicalProperties(services, member);
  if (!services.session.groupManager) member.PutCadx(keyword::kOptim, "0");
  return true;
}

}  // namespace quillmar
