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

// Other numbers than 1 show a calculation that waits for the user's values, such as 5 for a new
// bolted connection.
bool IsDue(const ProtocolRecord& record) {
  return IsOne(record.KeyWord(kCadSection, kRecalculate));
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

std::string ViewKeyword(std::size_t number) { return "View" + std::to_string(number); }

// The keys of the views, "<view>,<model key>", as the module makes their protocols from them.
void WriteViewList(ProtocolRecord& record, const std::vector<CalculatedPart>& views) {
  std::size_t number = 1;
  for (const CalculatedPart& view : views) {
    record.PutKeyWord(kViewsSection, ViewKeyword(number++).c_str(),
                      view.viewKey + "," + view.modelId);
  }
  while (!record.KeyWord(kViewsSection, ViewKeyword(number).c_str()).empty()) {
    record.EraseKeyWord(kViewsSection, ViewKeyword(number++).c_str());
  }
}

// The protocol that a view was made of; empty for a protocol that is none. A view holds a copy of
// the main protocol's list of views, in which it finds itself by its view key.
std::string SourceOf(const ProtocolRecord& record) {
  const std::string link = record.KeyWord(kLinksFromSection, kNewView);
  if (link.empty()) return {};
  const std::string key = record.ViewKey();
  for (std::size_t number = 1;; ++number) {
    const std::string entry = record.KeyWord(kViewsSection, ViewKeyword(number).c_str());
    if (entry.empty()) return {};
    if (entry.substr(0, entry.find(',')) == key) return link.substr(0, link.find('@'));
  }
}

void GiveStored(const ProtocolRecord& record, Inputs& inputs) {
  for (const DataParameter& stored : record.Parameters()) {
    if (!BelongsToCad(stored.name)) inputs.SetStored(stored.name, stored.value, stored.unit);
  }
}

// Which of its calculation's parts a protocol is, from 0.
std::size_t PartIndex(const ProtocolRecord& record) {
  const std::string number = record.KeyWord(kHostSection, kPartNumber);
  return static_cast<std::size_t>(std::max(1, std::atoi(number.c_str()))) - 1;
}

}  // namespace

CalculationRun::CalculationRun(const ProtocolStore& store, Orders orders, std::string modelsFolder)
    : store(store), orders(std::move(orders)), modelsFolder(std::move(modelsFolder)) {}

std::string CalculationRun::MainProtocolOf(const ProtocolRecord& record) const {
  std::string id = SourceOf(record);
  for (auto next = successors.find(id); next != successors.end(); next = successors.find(id)) {
    id = next->second;
  }
  return id;
}

RunResult CalculationRun::Run(const std::string& protocolId, RunReason reason) const {
  RunResult result;
  auto record = ProtocolRecord::Open(store, protocolId);
  if (!record) {
    result.message = "The protocol \"" + protocolId + "\" cannot be opened.";
    return result;
  }
  const std::string mainId = MainProtocolOf(*record);
  if (!mainId.empty() && mainId != protocolId) {
    record.reset();
    return Run(mainId, reason);
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

  result = TryToCalculate(*calculation, *record, order);
  if (result.olderLayout && reason == RunReason::Shown) return result;
  if (order && result.calculated) {
    orders.AnswerCalculated(*order, result.code, JoinList(result.protocols));
  } else if (order) {
    orders.AnswerRefused(*order, result.message);
  }
  return result;
}

RunResult CalculationRun::RunMember(const std::string& protocolId, const Order& fields) const {
  RunResult result;
  auto record = ProtocolRecord::Open(store, protocolId);
  const Calculation* calculation = record ? FindCalculation(record->DataFileType()) : nullptr;
  if (calculation == nullptr) {
    result.message = "There is no such calculation.";
    return result;
  }
  return TryToCalculate(*calculation, *record, fields);
}

RunResult CalculationRun::TryToCalculate(const Calculation& calculation, ProtocolRecord& record,
                                         const std::optional<Order>& order) const {
  const quillmar::platform::StandardFloatingPoint arithmetic;
  try {
    return Calculate(calculation, record, order);
  } catch (const InputError& error) {
    RunResult result;
    result.shown = true;
    result.message = error.what();
    record.PutKeyWord(kHostSection, kMessage, result.message);
    return result;
  }
}

RunResult CalculationRun::Calculate(const Calculation& calculation, ProtocolRecord& record,
                                    const std::optional<Order>& order) const {
  RunResult result;
  result.shown = true;
  result.code = StandsInCad(record) ? QM_CALLBACK_RECALCULATED : QM_CALLBACK_NEW_PART;
  if (calculation.HasOlderLayout() && record.MajorVersion() == 1 && !record.Parameters().empty()) {
    result.olderLayout = true;
    result.message = "The protocol has the older layout and must be converted first.";
    return result;
  }

  Inputs inputs;
  GiveStored(record, inputs);
  if (order) {
    for (const auto& [name, text] : order->fields) inputs.SetOrdered(name, text);
  }
  const std::vector<CalculatedPart> parts = hexaplan::Calculate(calculation, inputs);

  // Which part this protocol is, and where the others are kept.
  std::vector<std::string> members = SplitList(record.KeyWord(kHostSection, kPartList));
  std::size_t own = 0;
  if (members.empty()) {
    members.resize(parts.size());
    members[0] = record.Id();
  } else {
    own = PartIndex(record);
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
    WritePart(target, calculation, parts[k], inputs.Units());
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

void CalculationRun::CompleteView(const std::string& protocolId) const {
  auto view = ProtocolRecord::OpenShared(store, protocolId);
  if (!view) return;
  const std::string mainId = MainProtocolOf(*view);
  const auto main = mainId.empty() ? std::nullopt : ProtocolRecord::OpenShared(store, mainId);
  const Calculation* calculation = main ? FindCalculation(main->DataFileType()) : nullptr;
  if (calculation == nullptr) return;
  if (mainId != SourceOf(*view)) {
    view->PutKeyWord(kLinksFromSection, kNewView, mainId + "@" + kNewView);
  }

  const quillmar::platform::StandardFloatingPoint arithmetic;
  Inputs inputs;
  GiveStored(*main, inputs);
  try {
    const std::vector<CalculatedPart> parts = hexaplan::Calculate(*calculation, inputs);
    const std::size_t part = PartIndex(*main);
    if (part >= parts.size()) return;
    for (const CalculatedPart& each : parts[part].views) {
      if (each.viewKey != view->ViewKey()) continue;
      WriteObject(*view, *calculation, each, inputs.Units());
      view->PutGlobal("Model", view->ModelId());
    }
  } catch (const InputError& error) {
    view->PutKeyWord(kHostSection, kMessage, error.what());
  }
}

void CalculationRun::WritePart(ProtocolRecord& record, const Calculation& calculation,
                               const CalculatedPart& part, UnitSystem units) const {
  WriteObject(record, calculation, part, units);
  record.PutGlobal("Model", part.modelId);
  record.PutModel(part.modelId, part.viewKey);
  WriteViewList(record, part.views);
}

void CalculationRun::WriteObject(ProtocolRecord& record, const Calculation& calculation,
                                 const CalculatedPart& part, UnitSystem units) const {
  record.SetVersion(2, 0);
  record.PutKeyWord("Calc", "CalcName", calculation.Name());
  record.PutGlobal("TypeOfPart", std::to_string(static_cast<int>(part.kind)));
  record.PutGlobal("Caption", part.caption);
  record.PutGlobal("Bom1", part.description);
  record.PutGlobal("Bom2", part.size);
  record.PutGlobal("Bom3", record.Global("Standard"));
  record.PutGlobal("Subtype", part.subtype);
  record.PutGlobal(kReference, record.Id());
  const std::string unit = UnitName("mm", units);
  record.PutGlobal("Unit", unit);
  record.PutGlobal("UnitIsmm", units == UnitSystem::Metric ? "1" : "0");
  record.PutGlobal("PartUnit", unit);
  record.PutGlobal("Path", modelsFolder);
  record.PutGlobal("GenPartType", "1");
  record.PutGlobal("GenCopyFile", "1");
  record.PutGlobal("Changed", "0");
  record.PutGlobal("FirstRun", "0");
  record.PutKeyWord(kMainSection, kView, part.viewKey);
  record.PutKeyWord(kView, kDescription, part.subtype.empty() ? part.description : part.subtype);
  record.PutKeyWord("Material", "Material", part.material);
  // Older shafts held the number of their material under this name, and it would go before the
  // material's name in the texts of a bill of materials.
  record.EraseKeyWord(kDataSection, "material");

  EraseLeftovers(record, calculation, part.parameters);
  for (const DataParameter& each : part.parameters) record.PutParameter(each);
  record.PutKeyWord(kMeaningsSection, kUnits.name, kUnits.meaning);
  for (const ValueNote& note : calculation.Notes()) {
    record.PutKeyWord(kMeaningsSection, note.name.c_str(), note.meaning);
    if (!note.formula.empty()) {
      record.PutKeyWord(kFormulasSection, note.name.c_str(), note.formula);
    }
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
