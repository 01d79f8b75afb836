#include "drawboard/LibraryModel.h"

#include <nlohmann/json.hpp>

#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"

namespace drawboard {
namespace {

using Json = nlohmann::ordered_json;

std::optional<std::string> BytesOf(const Json& json) {
  if (!json.is_string()) return std::nullopt;
  return FromUtf8(json.get_ref<const std::string&>());
}

// Names of the items that were added.
std::vector<std::string> AddMissing(NamedTexts& items, const Json& model, const char* key) {
  std::vector<std::string> added;
  const auto found = model.find(key);
  if (found == model.end() || !found->is_object()) return added;
  for (const auto& [name, value] : found->items()) {
    const auto nameBytes = FromUtf8(name);
    const auto valueBytes = BytesOf(value);
    if (!nameBytes || !valueBytes || FindText(items, *nameBytes) != nullptr) continue;
    items.push_back({*nameBytes, *valueBytes});
    added.push_back(*nameBytes);
  }
  return added;
}

void TakeConfigurations(Configurations& configurations, const Json& model) {
  const auto found = model.find("configurations");
  if (found == model.end() || !found->is_array()) return;
  configurations.names.clear();
  for (const Json& name : *found) {
    if (const auto bytes = BytesOf(name)) configurations.names.push_back(*bytes);
  }
  if (configurations.active.empty() && !configurations.names.empty()) {
    configurations.active = configurations.names.front();
  }
}

}  // namespace

void ApplyLibraryModel(BoardObject& object) {
  if (object.modelPath.empty()) return;
  const auto text = ReadWholeFile(object.modelPath);
  if (!text) return;
  const Json model = Json::parse(*text, nullptr, false);
  if (!model.is_object()) return;
  for (std::string& name : AddMissing(object.parameters, model, "parameters")) {
    AddName(object.cadParameters, std::move(name));
  }
  AddMissing(object.featureStates, model, "features");
  TakeConfigurations(object.configurations, model);
}

void ForgetLibraryModel(BoardObject& object) {
  object.cadParameters.clear();
  object.featureStates.clear();
  object.configurations = {};
}

}  // namespace drawboard
