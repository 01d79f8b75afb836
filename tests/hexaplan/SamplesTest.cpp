// The sample files hold together: the job can be calculated, each part has its library model, each
// text that the module asks for is there in every language.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "hexaplan/calculation/Calculation.h"

namespace hexaplan {
namespace {

const std::filesystem::path kSamples = QUILLMAR_SAMPLES;

std::string Contents(const std::filesystem::path& file) {
  std::ifstream stream(kSamples / file, std::ios::binary);
  std::stringstream text;
  text << stream.rdbuf();
  return text.str();
}

void Give(Inputs& inputs, const nlohmann::json& given) {
  for (const auto& [name, value] : given.items()) {
    inputs.SetOrdered(name, value.is_string() ? value.get<std::string>() : value.dump());
  }
}

TEST(Samples, GearboxIsCalculatedAndItsChangesToo) {
  const auto job = nlohmann::json::parse(Contents("jobs/gearbox.json"));
  std::map<std::string, std::vector<CalculatedPart>> parts;
  std::map<std::string, std::string> kinds;
  for (const auto& each : job.at("calculations")) {
    Inputs inputs;
    Give(inputs, each.at("inputs"));
    kinds[each.at("name")] = each.at("calculation");
    parts[each.at("name")] = FindCalculation(each.at("calculation"))->Run(inputs);
  }
  EXPECT_EQ(parts["gears"].size(), 2u);

  for (const auto& change : job.at("changes")) {
    const std::string name = change.at("name");
    Inputs inputs;
    for (const DataParameter& each : parts.at(name)[0].parameters) {
      inputs.SetStored(each.name, each.value);
    }
    Give(inputs, change.at("inputs"));
    const auto changed = FindCalculation(kinds.at(name))->Run(inputs);
    EXPECT_NE(changed[0].size, parts.at(name)[0].size) << name;
  }
  for (const auto& [name, list] : parts) {
    for (const CalculatedPart& part : list) {
      EXPECT_TRUE(exists(kSamples / "models/Drawboard" / (part.modelId + ".dbp"))) << part.modelId;
    }
  }
}

TEST(Samples, TextsAreThereInEveryLanguage) {
  const std::string texts = Contents("module/Quillmar.lng");
  for (int number : {1, 2, 3, 4, 5, 45, 46, 47, 63, 72, 112}) {
    const auto section = texts.find("[" + std::to_string(number) + "]\r\n");
    ASSERT_NE(section, std::string::npos) << number;
    const std::string body = texts.substr(section, texts.find("\r\n[", section) - section);
    for (const char* language : {"EN", "CZ", "DE"}) {
      EXPECT_TRUE(std::regex_search(body, std::regex(std::string(language) + "=[^\r]")))
          << number << language;
    }
  }
  // The file is in Windows-1250: a Czech letter is one byte.
  EXPECT_THAT(texts, testing::HasSubstr("CZ=Nastaven\xED\r\n"));
}

}  // namespace
}  // namespace hexaplan
