#include "hexaplan/host/CalculationRun.h"

#include <algorithm>
#include <cstdlib>

#include "hexaplan/host/HostVocabulary.h"
#include "platform/FloatingPoint.h"
#include "quillmar/CalculationHost.h"

namespace hexaplan {

namespace {

bool IsOne(const std::string& text) { return std::atoi(text.c_str()) == 1; }

bool BelongsToCad(const std::string& name) { return name.rfind("VXP_", 0) == 0; }

bool IsDue(const ProtocolRecord& record) {
  return std::atoi(record.KeyWord(kCadSection, kRecalculate).c_str()) != 0;
}

// The CAD has an object for the protocol, so that its result is a recalculation.
bool StandsInCad(const ProtocolRecord& record) {
  return IsOne(record.KeyWord(kCadSection, kDrawn)) ||
         IsOne(record.KeyWord(kCadSection, kFromCad)) ||
         IsOne(record.KeyWord(kCadSection, kUpdate));
}

std::vector<std::string> SplitList(const std::string& list) {
  std::vector<std::string> items;
  for (std::size_t begin = 0; begin < list.size();) {
    const auto comma = std::min(list.find(',', begin), list.size());
    if (comma > begin) items.push_back(list.substr(begin, comma - begin));
    begin = comma + 1;
  }
  return items;
}

std::string JoinList(const std::vector<std::string>& items) {
  std::string list;
  for (const std::string& item : items) list += (list.empty() ? "" : ",") + item;
  return list;
}

// The part of "<base>_<number>" in front of the number; empty for other names.
std::string BaseOfNumbered(const std::string& name) {
  const auto bar = name.rfind('_');
  if (bar == std::string::npos || bar + 1 == name.size()) return {};
  const bool digits = std::all_of(name.begin() + static_cast<std::ptrdiff_t>(bar) + 1, name.end(),
                                  [](char c) { return c >= '0' && c <= '9'; });
  return digits ? name.substr(0, bar) : std::string();
}

// Removes what a longer list of an earlier run left behind. Parameters that the calculation does
// not know stay: the CAD may have added them.
void EraseLeftovers(ProtocolRecord& record, const Calculation& calculation,
                    const std::vector<DataParameter>& current) {
  const auto numbered = calculation.NumberedNames();
  const std::set<std::string, NameLess> bases(numbered.begin(), numbered.end());
  std::set<std::string, NameLess> names;
  for (const DataParameter& each : current) names.insert(each.name);
  for (const DataParameter& each : record.Parameters()) {
    if (names.count(each.name) == 0 && bases.count(BaseOfNumbered(each.name)) != 0) {
      record.EraseKeyWord(kDataSection, each.name.c_str());
    }
  }
}

}  // namespace

CalculationRun::CalculationRun(const ProtocolStore& store, Orders orders, std::string modelsFolder)
    : store(store), orders(std::move(orders)), modelsFolder(std::move(modelsFolder)) {}

RunResult CalculationRun::Run(const std::string& protocolId, RunReason reason) const {
  RunResult result;
  auto record = ProtocolRecord::Open(store, protocolId);
  if (!record) {
    result.message = "The protocol \"" + protocolId + "\" cannot be opened.";
    return result;
  }
  const std::string type = record->DataFileType();
  const Calculation* calculation = FindCalculation(type);
  if (calculation == nullptr) {
    result.message = "There is no calculation \"" + type + "\".";
    return result;
  }
  result.shown = true;

  std::optional<Order> order;
  if (reason != RunReason::Silent) order = orders.Find(type, record->Id());
  if (reason == RunReason::Shown && !order && !IsDue(*record)) return result;

  const quillmar::platform::StandardFloatingPoint arithmetic;
  try {
    result = Calculate(*calculation, *record, order);
  } catch (const InputError& error) {
    result.message = error.what();
    record->PutKeyWord(kHostSection, kMessage, result.message);
  }
  if (order && result.calculated) {
    orders.AnswerCalculated(*order, result.code, JoinList(result.protocols));
  } else if (order) {
    orders.AnswerRefused(*order, result.message);
  }
  return result;
}

RunResult CalculationRun::Calculate(const Calculation& calculation, ProtocolRecord& record,
                                    const std::optional<Order>& order) const {
  RunResult result;
  result.shown = true;
  result.code = StandsInCad(record) ? QM_CALLBACK_RECALCULATED : QM_CALLBACK_NEW_PART;
  if (calculation.HasOlderLayout() && record.MajorVersion() == 1 && !record.Parameters().empty()) {
    result.message = "The protocol has the older layout and must be converted first.";
    return result;
  }

  Inputs inputs;
  for (const DataParameter& stored : record.Parameters()) {
    if (!BelongsToCad(stored.name)) inputs.SetStored(stored.name, stored.value);
  }
  if (order) {
    for (const auto& [name, text] : order->fields) inputs.SetOrdered(name, text);
  }
  const std::vector<CalculatedPart> parts = calculation.Run(inputs);

  // Which part this protocol is, and where the others are kept.
  std::vector<std::string> members = SplitList(record.KeyWord(kHostSection, kPartList));
  const std::string numberText = record.KeyWord(kHostSection, kPartNumber);
  std::size_t own = 0;
  if (members.empty()) {
    members.resize(parts.size());
    members[0] = record.Id();
  } else {
    own = static_cast<std::size_t>(std::max(1, std::atoi(numberText.c_str()))) - 1;
  }
  if (members.size() != parts.size() || own >= parts.size()) {
    throw InputError("parts", "the number of parts cannot change after the first calculation.");
  }
  members[own] = record.Id();

  std::vector<ProtocolRecord> others;
  std::vector<std::size_t> numbers;
  for (std::size_t k = 0; k < parts.size(); ++k) {
    if (k == own) continue;
    auto other = members[k].empty() ? ProtocolRecord::CreateNew(store)
                                    : ProtocolRecord::Open(store, members[k]);
    // The other part of the pair may have been taken out of the store: this one goes on alone.
    if (!other) continue;
    if (members[k].empty()) {
      for (const char* item : {"Standard", "Language"}) other->PutGlobal(item, record.Global(item));
      other->PutKeyWord(kMainSection, kDataFile, record.KeyWord(kMainSection, kDataFile));
    }
    members[k] = other->Id();
    others.push_back(std::move(*other));
    numbers.push_back(k);
  }

  const std::string list = JoinList(members);
  const auto write = [&](ProtocolRecord& target, std::size_t k) {
    WritePart(target, calculation, parts[k]);
    target.PutKeyWord(kHostSection, kPartNumber, std::to_string(k + 1));
    target.PutKeyWord(kHostSection, kPartList, list);
    result.protocols.push_back(target.Id());
    return target.Close();
  };
  bool stored = write(record, own);
  for (std::size_t i = 0; i < others.size(); ++i) stored = write(others[i], numbers[i]) && stored;
  if (!stored) {
    result.message = "The result of the calculation cannot be stored.";
    result.protocols.clear();
    return result;
  }
  result.calculated = true;
  return result;
}

void CalculationRun::WritePart(ProtocolRecord& record, const Calculation& calculation,
                               const CalculatedPart& part) const {
  record.SetVersion(2, 0);
  record.PutKeyWord("Calc", "CalcName", calculation.Name());
  record.PutGlobal("TypeOfPart", std::to_string(static_cast<int>(part.kind)));
  record.PutGlobal("Caption", part.caption);
  record.PutGlobal("Bom1", part.description);
  record.PutGlobal("Bom2", part.size);
  record.PutGlobal("Bom3", record.Global("Standard"));
  record.PutGlobal("Model", part.modelId);
  record.PutGlobal("Subtype", part.subtype);
  record.PutGlobal("RefKey", record.Id());
  record.PutGlobal("Unit", "mm");
  record.PutGlobal("UnitIsmm", "1");
  record.PutGlobal("PartUnit", "mm");
  record.PutGlobal("Path", modelsFolder);
  record.PutGlobal("GenPartType", "1");
  record.PutGlobal("GenCopyFile", "1");
  record.PutGlobal("Changed", "0");
  record.PutGlobal("FirstRun", "0");
  record.PutModel(part.modelId, part.viewKey);
  record.PutKeyWord(kMainSection, kView, part.viewKey);
  record.PutKeyWord(kView, kDescription, part.subtype.empty() ? part.description : part.subtype);
  record.PutKeyWord("Material", "Material", part.material);

  EraseLeftovers(record, calculation, part.parameters);
  for (const DataParameter& each : part.parameters) record.PutParameter(each);
  for (const auto& [name, meaning] : calculation.Descriptions()) {
    record.PutKeyWord("VarDescriptions", name.c_str(), meaning);
  }

  record.PutKeyWord(kCadSection, kRecalculate, "0");
  record.PutKeyWord(kCadSection, kUpdate, "0");
  // The protocol stays in the store when its part stands in the CAD, so that it can be shown again.
  record.PutKeyWord(kCadSection, kDoNotErase, "1");
  if (record.KeyWord(kCadSection, kSmartPart).empty()) {
    record.PutKeyWord(kCadSection, kSmartPart, "1");
  }
  record.EraseKeyWord(kHostSection, kMessage);
}

}  // namespace hexaplan
