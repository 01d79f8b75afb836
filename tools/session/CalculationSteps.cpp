// Steps that calculate: new calculations, changed ones, and those that came with an older document.
#include <fmt/format.h>

#include <algorithm>
#include <type_traits>

#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/Files.h"
#include "platform/Modules.h"
#include "quillmar/Storage.h"
#include "session/JobFields.h"
#include "session/Notes.h"
#include "session/Session.h"
#include "session/Units.h"

namespace session {
namespace {

using drawboard::FromUtf8;
using drawboard::ToUtf8;
namespace platform = quillmar::platform;

constexpr const char* kStandard = "Standard";
constexpr const char* kProfileStandard = "PrfStd";  // the same, where formats look for it

// What the window of a calculation does to a protocol of the store.
class CalculationWindow {
 public:
  CalculationWindow() {
    const auto store = platform::FindLoadedModule(QM_STORAGE_LIBRARY);
    const auto bind = [&](auto& function, const char* name) {
      function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(
          platform::FindFunction(store, name));
      if (function == nullptr) throw SessionError(QM_STORAGE_LIBRARY " is not loaded");
    };
    bind(open, "Com_OpenProtocol");
    bind(put, "Com_PutGlobalData");
    bind(close, "Com_CloseProtocol");
  }

  bool Put(const std::string& protocolId, const std::vector<std::string>& names,
           const std::string& value) const {
    std::string id = protocolId;
    id.resize(QM_PROTOCOL_ID_BUFFER);
    if (open(id.data()) != 1) return false;
    const bool written = std::all_of(names.begin(), names.end(), [&](const std::string& name) {
      return put(id.c_str(), name.c_str(), value.c_str()) != 0;
    });
    return close(id.c_str()) != 0 && written;
  }

 private:
  short(QM_STDCALL* open)(char* protocolId) = nullptr;
  short(QM_STDCALL* put)(const char* protocolId, const char* name, const char* value) = nullptr;
  short(QM_STDCALL* close)(const char* protocolId) = nullptr;
};

// A document beside the job's, open while this lives, which then leaves nothing behind.
class SideDocument {
 public:
  SideDocument(const CadFunctions& cad, const Job& job, const std::string& folder)
      : cad(cad), job(job), path(folder + "\\" + job.document + " (older)") {
    if (cad.Drawboard_NewDocument((path + ".json").c_str(), job.unit.c_str()) == 0) {
      throw SessionError("The CAD cannot open the older document");
    }
  }
  ~SideDocument() {
    cad.Drawboard_OpenDocument(job.document.c_str());
    drawboard::EraseFolder(path);
    platform::RemoveFile(path + ".json");
  }
  SideDocument(const SideDocument&) = delete;
  SideDocument& operator=(const SideDocument&) = delete;

 private:
  const CadFunctions& cad;
  const Job& job;
  std::string path;
};

// Calculations of an inch document have inch inputs, unless the job says otherwise.
Inputs InUnitOf(const Job& job, Inputs inputs) {
  const bool given = std::any_of(inputs.begin(), inputs.end(),
                                 [](const auto& input) { return input.first == "units"; });
  if (job.unit == "in" && !given) inputs.emplace_back("units", "1");
  return inputs;
}

// As the module takes lists of parameters: "name,value,".
std::string ParameterList(const Inputs& values) {
  std::string list;
  for (const auto& [name, value] : values) {
    list += name + "," + fmt::format("{}", NumberOf(value)) + ",";
  }
  return list;
}

}  // namespace

std::string Session::Order(const std::string& calculation, const std::string& protocolId,
                           const Inputs& inputs) {
  std::string order = orders.Write(calculation, protocolId, inputs);
  if (order.empty()) Fail("Its inputs cannot be written for the calculation host");
  return order;
}

void Session::AwaitParts(const std::string& calculation, const std::string& order) {
  const auto protocols = AwaitAnswer(order);
  AwaitDocument("Its parts do not stand in the CAD", [&](const DocumentJson& document) {
    return std::all_of(protocols.begin(), protocols.end(), [&](const std::string& id) {
      return !ObjectsOfProtocol(document, id).empty();
    });
  });
  Names names;
  const DocumentJson document = Document();
  for (const std::string& id : protocols) {
    for (std::string& name : ObjectsOfProtocol(document, id)) names.push_back(std::move(name));
    for (std::string& name : ViewsOfProtocol(document, id)) names.push_back(std::move(name));
  }
  Done(
      fmt::format("\"{}\" is calculated; in the CAD stand {}", records.back().name, ListOf(names)));
  Leave(calculation, std::move(names), true);
}

void Session::Perform(const Calculation& calculation) {
  if (const Names standing = Standing(calculation.objects); !standing.empty()) {
    return Recalculate(calculation.calculation, standing, calculation.inputs, calculation.standard);
  }
  Select(calculation.on);
  const std::string order = Order(calculation.calculation, {}, InUnitOf(job, calculation.inputs));
  Call("StartCalculation",
       fmt::format("\"{}\", \"{}\"", calculation.calculation, ToUtf8(calculation.standard)), [&] {
         module->call.StartCalculation(calculation.calculation.c_str(),
                                       calculation.standard.c_str());
         return 1;
       });
  AwaitParts(calculation.calculation, order);
}

void Session::Perform(const Change& change) {
  const Started& calculation = started[change.name];
  Recalculate(calculation.calculation, Names(calculation.objects), change.inputs);
}

bool Session::HasInputs(const Names& objects, const Inputs& inputs) {
  const DocumentJson document = Document();
  return std::all_of(inputs.begin(), inputs.end(), [&](const auto& input) {
    const auto value = ParameterOf(document, objects, ToUtf8(input.first));
    return value && AreEqual(NumberOf(*value), NumberOf(input.second));
  });
}

bool Session::HasStandard(const Names& objects, const std::string& standard) {
  if (standard.empty()) return true;
  const DocumentJson document = Document();
  return std::all_of(objects.begin(), objects.end(), [&](const std::string& name) {
    const auto globals = KeywordsOfReference(ConnectionOf(document, name), "Globals");
    const auto stands = globals.find(kStandard);
    return stands == globals.end() || stands->second == ToUtf8(standard);
  });
}

// The protocols are in the store. No export of the module changes the standard of a calculation
// that stands: that is done in its window, which writes it into the protocol.
void Session::ChooseStandard(const Names& objects, const std::string& standard) {
  const CalculationWindow window;
  const DocumentJson document = Document();
  for (const std::string& name : objects) {
    std::vector<std::string> items = {kStandard};
    if (KeywordsOfReference(ConnectionOf(document, name), "Globals").count(kProfileStandard) != 0) {
      items.emplace_back(kProfileStandard);
    }
    if (!window.Put(ProtocolOf(document, name), items, standard)) {
      Fail(fmt::format("The standard of \"{}\" cannot be changed", name));
    }
  }
}

void Session::Recalculate(const std::string& calculation, const Names& objects,
                          const Inputs& inputs, const std::string& standard) {
  const std::string name = records.back().name;
  const bool inStandard = HasStandard(objects, standard);
  if (inStandard && HasInputs(objects, inputs)) {
    Done(fmt::format("\"{}\" has these values; in the CAD stand {}", name, ListOf(objects)));
    return Leave(calculation, objects, false);
  }
  const DocumentJson before = Document();
  const std::string protocolId = ProtocolOf(before, objects.front());
  const std::string order = Order(calculation, protocolId, inputs);
  ShowCalculationOf(objects, inStandard ? std::string() : standard);
  AwaitAnswer(order);
  AwaitChanges(before, objects);
  Done(fmt::format("\"{}\" is recalculated; updated in the CAD are {}", name, ListOf(objects)));
  Leave(calculation, objects, false);
}

void Session::Obtain(const std::string& objectName) {
  const std::string name = *FromUtf8(objectName);
  Require(Call("ObtainProtocol", ListOf({objectName}),
               [&] { return module->call.ObtainProtocol(name.c_str()); }),
          "ObtainProtocol failed");
}

void Session::ShowCalculationOf(const Names& objects, const std::string& standard) {
  const std::string protocolId = ProtocolOf(Document(), objects.front());
  for (const std::string& object : objects) Obtain(object);
  if (!standard.empty()) ChooseStandard(objects, standard);
  Require(Call("ShowDialogUT", fmt::format("\"{}\"", protocolId),
               [&] { return module->call.ShowDialogUT(protocolId.c_str()); }),
          "ShowDialogUT failed");
}

// The older document is played by an object that carries the reference text of such a time: it does
// not say which layout it has, and what is opened from it is of the older one.
std::string Session::OlderReference(const OldPart& part) {
  constexpr int kRoom = 65536;
  constexpr std::size_t kIdentifierRoom = 260;
  const std::string dataFile = "KEELDATA|" + part.calculation;
  const std::string values = ParameterList(part.values);
  char id[kIdentifierRoom] = {};
  int room = kRoom;
  std::string reference(kRoom, '\0');
  Require(Call("CreatePartProtocol", fmt::format("\"{}\", \"{}\"", dataFile, ToUtf8(part.standard)),
               [&] {
                 return module->call.CreatePartProtocol(dataFile.c_str(), part.standard.c_str(),
                                                        "MODEL", values.c_str(), id,
                                                        reference.data(), &room);
               }),
          "CreatePartProtocol failed");
  reference = WithoutLayout(reference.substr(0, reference.find('\0')));
  char copyId[kIdentifierRoom] = {};
  std::string copy(kRoom + kIdentifierRoom, '\0');
  Require(Call("CopyProtocol", fmt::format("\"{}\"", id),
               [&] { return module->call.CopyProtocol(reference.c_str(), copyId, copy.data()); }),
          "CopyProtocol failed");
  copy.resize(copy.find('\0'));
  return copy;
}

struct Session::Opened {
  Names objects;
  std::string layouts;  // for people
};

Session::Opened Session::OpenOlderPart(const OldPart& part) {
  const std::string reference = OlderReference(part);
  const DocumentJson before = Document();
  Require(cad.call.Drawboard_Place(part.kind.c_str(), part.name.c_str(), reference.c_str()),
          "The CAD cannot open the part");
  Names objects = NewObjects(before);
  const DocumentJson opened = Document();
  const std::string order = Order(part.calculation, ProtocolOf(opened, objects.front()), {});
  ShowCalculationOf(objects);
  AwaitAnswer(order);
  AwaitChanges(opened, objects);
  std::string layouts = fmt::format("{} before, {} after", LayoutOfReference(reference),
                                    LayoutOfReference(ConnectionOf(Document(), objects.front())));
  return {std::move(objects), std::move(layouts)};
}

Inputs Session::InputsOfOlderPart(const OldPart& part) {
  Inputs inputs;
  {
    const SideDocument older(cad.call, job, setup.drive + kDocuments);
    const std::string object = OpenOlderPart(part).objects.front();
    const DocumentJson document = Document();
    const Notes notes(ConnectionOf(document, object));
    for (const auto& [name, value] : ParametersOf(document, object)) {
      if (notes.IsInput(name)) inputs.emplace_back(*FromUtf8(name), *FromUtf8(value));
    }
  }
  for (const Step& step : job.steps) {
    const auto* change = std::get_if<Change>(&step);
    if (change == nullptr || change->name != part.name) continue;
    for (const auto& [name, value] : change->inputs) PutInput(inputs, name, value);
  }
  return inputs;
}

void Session::Perform(const OldPart& part) {
  if (const Names standing = Standing(part.objects); !standing.empty()) {
    return Recalculate(part.calculation, standing, InputsOfOlderPart(part), part.standard);
  }
  Opened opened = OpenOlderPart(part);
  Done(fmt::format("\"{}\" is converted (layout {}) and calculated; in the CAD stands {}",
                   ToUtf8(part.name), opened.layouts, ListOf(opened.objects)));
  Leave(part.calculation, std::move(opened.objects), true);
}

}  // namespace session
