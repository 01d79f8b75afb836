// Steps that calculate: new calculations, changed ones, and those that came with an older document.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "drawboard/CodePage.h"
#include "session/Session.h"
#include "session/Units.h"

namespace session {
namespace {

using drawboard::FromUtf8;
using drawboard::ToUtf8;

constexpr double kEqual = 1e-7;

// Calculations of an inch document have inch inputs, unless the job says otherwise.
Inputs InUnitOf(const Job& job, Inputs inputs) {
  const bool given = std::any_of(inputs.begin(), inputs.end(),
                                 [](const auto& input) { return input.first == "units"; });
  if (job.unit == "in" && !given) inputs.emplace_back("units", "1");
  return inputs;
}

double NumberOf(std::string text) {
  std::replace(text.begin(), text.end(), ',', '.');
  return std::strtod(text.c_str(), nullptr);
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
    return Recalculate(calculation.calculation, standing, calculation.inputs);
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
    if (!value) return false;
    const double stands = NumberOf(*value);
    const double wanted = NumberOf(input.second);
    return std::abs(stands - wanted) <= kEqual * std::max(1.0, std::abs(wanted));
  });
}

void Session::Recalculate(const std::string& calculation, const Names& objects,
                          const Inputs& inputs) {
  const std::string name = records.back().name;
  if (HasInputs(objects, inputs)) {
    Done(fmt::format("\"{}\" has these values; in the CAD stand {}", name, ListOf(objects)));
    return Leave(calculation, objects, false);
  }
  const DocumentJson before = Document();
  const std::string protocolId = ProtocolOf(before, objects.front());
  const std::string order = Order(calculation, protocolId, inputs);
  ShowCalculationOf(objects);
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

void Session::ShowCalculationOf(const Names& objects) {
  const std::string protocolId = ProtocolOf(Document(), objects.front());
  for (const std::string& object : objects) Obtain(object);
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

void Session::Perform(const OldPart& part) {
  if (const Names standing = Standing(part.objects); !standing.empty()) {
    Done(fmt::format("\"{}\" was converted before; in the CAD stands {}", ToUtf8(part.name),
                     ListOf(standing)));
    return Leave(part.calculation, standing, false);
  }
  const std::string reference = OlderReference(part);
  const DocumentJson before = Document();
  Require(cad.call.Drawboard_Place(part.kind.c_str(), part.name.c_str(), reference.c_str()),
          "The CAD cannot open the part");
  const Names objects = NewObjects(before);
  const DocumentJson opened = Document();
  const std::string order = Order(part.calculation, ProtocolOf(opened, objects.front()), {});
  ShowCalculationOf(objects);
  AwaitAnswer(order);
  AwaitChanges(opened, objects);
  const std::string layouts =
      fmt::format("{} before, {} after", LayoutOfReference(reference),
                  LayoutOfReference(ConnectionOf(Document(), objects.front())));
  Done(fmt::format("\"{}\" is converted (layout {}) and calculated; in the CAD stands {}",
                   ToUtf8(part.name), layouts, ListOf(objects)));
  Leave(part.calculation, objects, true);
}

}  // namespace session
