// What the module reads from the CAD: references, lists, properties.
#include <algorithm>

#include "drawboard/BoardError.h"
#include "drawboard/DocumentJson.h"
#include "drawboard/Driver.h"

namespace drawboard {
namespace {

constexpr const char* kNextReference = "<@NEXT_PROT>";
constexpr std::size_t kNameCapacity = 1024;
constexpr std::size_t kIdentifierCapacity = 260;
constexpr std::size_t kPathCapacity = 1024;

Board& TheBoard() { return TheAddin().board; }

PartDescription Describe(const BoardObject& object) {
  return DescribePart(object, TheBoard().Current());
}

MassProperties RequireMass(const char* key) {
  const BoardObject& object = TheBoard().Require(TextOf(key));
  const auto mass = TheBoard().Geometry().Weigh(Describe(object));
  if (!mass) throw BoardError("\"" + object.name + "\" is no body that has a mass");
  return *mass;
}

const BoardObject& RequireAssembly() {
  const BoardObject* assembly = TheBoard().Current().AssemblyObject();
  if (assembly == nullptr) throw BoardError("No protocol is connected to the assembly");
  return *assembly;
}

// An object that others are parts of: only that one answers which of them are shown.
bool HasParts(const BoardObject& object) { return object.kind == Kind::Assembly; }

// An object that can be shown and hidden.
bool StandsInModel(const BoardObject& object) { return !object.file.empty(); }

}  // namespace

namespace driver {

int GetPart(char* partName, char* text, int* size) {
  ListBuffer answer(text, size);
  const BoardObject* object = TheBoard().Selected();
  if (object == nullptr) throw BoardError("Nothing is selected");
  GiveText(object->name, partName, kNameCapacity);
  return answer.Give(object->connection);
}

int GetProtocol(const char* partName, char* text, int* size) {
  ListBuffer answer(text, size);
  return answer.Give(TheBoard().Require(TextOf(partName)).connection);
}

int GetAllParts(char* text, int* size) {
  ListBuffer answer(text, size);
  std::string all;
  for (const BoardObject& object : TheBoard().Current().objects) {
    if (object.connection.empty()) continue;
    if (!all.empty()) all += kNextReference;
    all += object.connection;
  }
  return answer.Give(all);
}

int GetParameterList(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  return answer.Give(FormatList(TheBoard().Require(TextOf(key)).parameters));
}

int GetParameterListEx(const char* key, char* text, int* size, int, int) {
  return GetParameterList(key, text, size);
}

int GetShaftParameterList(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  const BoardObject& object = TheBoard().Require(TextOf(key));
  if (object.kind != Kind::Shaft) throw BoardError("\"" + object.name + "\" is no shaft");
  return answer.Give(FormatList(object.parameters));
}

int GetPhysicalPropertiesEx(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  return answer.Give(FormatList(PhysicalPropertyTexts(RequireMass(key))));
}

int GetPhysicalProperties(const char* key, double* centerX, double* centerY, double* centerZ,
                          double* volume, double* area, double* mass, double* momentXX,
                          double* momentYY, double* momentZZ, double* momentXY, double* momentXZ,
                          double* momentYZ) {
  const MassProperties found = RequireMass(key);
  const auto give = [](double value, double* place) {
    if (place != nullptr) *place = value;
  };
  give(found.centerX, centerX);
  give(found.centerY, centerY);
  give(found.centerZ, centerZ);
  give(found.volume, volume);
  give(found.area, area);
  give(found.mass, mass);
  give(found.momentXX, momentXX);
  give(found.momentYY, momentYY);
  give(found.momentZZ, momentZZ);
  give(found.momentXY, momentXY);
  give(found.momentXZ, momentXZ);
  give(found.momentYZ, momentYZ);
  return 1;
}

int GetFeaturesState(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  return answer.Give(FormatList(TheBoard().Require(TextOf(key)).featureStates));
}

int GetReferenceDims(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  const BoardObject& object = TheBoard().Require(TextOf(key));
  return answer.Give(FormatList(TheBoard().Geometry().Measure(Describe(object))));
}

int GetPartsVisibility(const char* key, char* text, int* size) {
  ListBuffer answer(text, size);
  NamedTexts states;
  if (HasParts(TheBoard().Require(TextOf(key)))) {
    for (const BoardObject& object : TheBoard().Current().objects) {
      if (StandsInModel(object)) states.push_back({object.name, object.visible ? "1" : "0"});
    }
  }
  return answer.Give(FormatList(states));
}

int GetConfiguration(const char* protocolId, char* active, int capacity, char* list) {
  const Configurations& known = TheBoard().Require(TextOf(protocolId)).configurations;
  const auto room = static_cast<std::size_t>(std::max(capacity, 0));
  GiveText(known.active, active, room);
  GiveText(JoinNames(known.names), list, room);
  return 1;
}

int GetAssembly(char* first, char* second, char* text, int* size) {
  ListBuffer answer(text, size);
  const BoardObject& assembly = RequireAssembly();
  const std::string& caption = assembly.caption.empty() ? assembly.name : assembly.caption;
  GiveText(caption, first, kNameCapacity);
  GiveText(assembly.protocolId, second, kIdentifierCapacity);
  return answer.Give(assembly.connection);
}

int GetAssemblyName(char* name) {
  GiveText(TheBoard().Current().Name(), name, kIdentifierCapacity);
  return 1;
}

int GetAssemblyPath(char* path) {
  GiveText(TheBoard().Current().path, path, kPathCapacity);
  return 1;
}

}  // namespace driver
}  // namespace drawboard
