// The sample files hold together: the job can be calculated, each part has its library model, each
// text that the module asks for is there in every language.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
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

// The calculations, changes and copies of a job, whichever form it has.
std::vector<nlohmann::json> StepsOf(const nlohmann::json& job) {
  std::vector<nlohmann::json> steps;
  for (const char* list : {"steps", "calculations", "changes"}) {
    for (const auto& each : job.value(list, nlohmann::json::array())) {
      if (each.contains("inputs")) steps.push_back(each);
    }
  }
  return steps;
}

// A part, or one of its views by the table of models, has its library model. What the host draws
// has none.
void ExpectModel(const CalculatedPart& part) {
  if (part.kind == PartKind::Symbol || part.kind == PartKind::Model) return;
  const bool feature = part.kind == PartKind::Feature || part.kind == PartKind::Cut;
  const char* extension = feature ? ".dbf" : ".dbp";
  EXPECT_TRUE(exists(kSamples / "models/Drawboard" / (part.modelId + extension))) << part.modelId;
  const std::string table = Contents("models/models.ini");
  for (CalculatedPart view : part.views) {
    std::smatch model;
    ASSERT_TRUE(std::regex_search(table, model, std::regex(view.modelId + "=([^\r]*)\r\n")))
        << view.modelId;
    view.modelId = model[1];
    ExpectModel(view);
  }
}

// Whoever looks at a value learns what it means, and at a result also by which formula it was
// found.
void ExpectNotes(const CalculatedPart& part, const Calculation& calculation, const Inputs& inputs) {
  static const std::regex number("_[0-9]+$");
  const std::vector<ValueNote> notes = calculation.Notes();
  std::set<std::string> read = {kUnits.name};
  for (const DataParameter& each : inputs.Parameters()) read.insert(each.name);
  std::set<std::string, NameLess> names;
  for (const DataParameter& each : part.parameters) {
    // A protocol does not tell upper from lower case.
    EXPECT_TRUE(names.insert(each.name).second) << calculation.DataFile() << " " << each.name;
    const std::string row = std::regex_replace(each.name, number, "_i");
    bool meaning = each.name == kUnits.name, formula = false;
    for (const ValueNote& note : notes) {
      if (note.name != each.name && note.name != row) continue;
      meaning = meaning || !note.meaning.empty();
      formula = formula || !note.formula.empty();
    }
    EXPECT_TRUE(meaning) << calculation.DataFile() << " " << each.name;
    EXPECT_TRUE(formula || read.count(each.name) != 0)
        << calculation.DataFile() << " " << each.name;
  }
  for (const CalculatedPart& view : part.views) ExpectNotes(view, calculation, inputs);
}

TEST(Samples, JobsAreCalculatedAndTheirChangesToo) {
  for (const char* file : {"jobs/gearbox.json", "jobs/tour.json"}) {
    std::map<std::string, std::vector<CalculatedPart>> parts;
    std::map<std::string, std::string> kinds;
    for (const auto& step : StepsOf(nlohmann::json::parse(Contents(file)))) {
      const std::string name = step.at("name");
      const bool change = parts.count(name) != 0;
      const std::string source = change ? name : step.value("of", "");
      Inputs inputs;
      if (!source.empty()) {
        for (const DataParameter& each : parts.at(source)[0].parameters) {
          inputs.SetStored(each.name, each.value, each.unit);
        }
        kinds[name] = kinds[source];
      } else {
        kinds[name] = step.at("calculation");
      }
      Give(inputs, step.at("inputs"));
      const auto calculated = Calculate(*FindCalculation(kinds[name]), inputs);
      if (change) {
        EXPECT_NE(calculated[0].size, parts[name][0].size) << name;
      }
      for (const CalculatedPart& part : calculated) {
        ExpectModel(part);
        ExpectNotes(part, *FindCalculation(kinds[name]), inputs);
      }
      parts[name] = calculated;
    }
    EXPECT_EQ(parts["gears"].size(), 2u);
  }
}

void AddNumbers(const std::string& text, const char* pattern, std::set<int>& numbers) {
  const std::regex expression(pattern);
  for (std::sregex_iterator found(text.begin(), text.end(), expression), end; found != end;
       ++found) {
    numbers.insert(std::stoi((*found)[1]));
  }
}

// Numbers of texts as the module's sources name them, and the placeholders in its dialogs.
std::set<int> TextsThatTheModuleAsksFor() {
  std::set<int> numbers;
  const std::filesystem::path sources = kSamples / "../src";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(sources)) {
    const std::string extension = entry.path().extension();
    if (extension == ".rc") AddNumbers(Contents(entry.path()), "\"~([0-9]+)\"", numbers);
    if (extension != ".cpp") continue;
    const std::string source = Contents(entry.path());
    AddNumbers(source, "constexpr int k(?:Text\\w+|\\w*Title(?:Text)?) = ([0-9]+);", numbers);
    std::smatch named;
    if (std::regex_search(source, named, std::regex("enum TextNumber \\{[^}]*"))) {
      AddNumbers(named.str(), "= ([0-9]+)", numbers);
    }
    AddNumbers(source, "\\{k(?:Ask|\\w+Folder)\\w*, ([0-9]+)\\}", numbers);
  }
  return numbers;
}

// The module reads the list of sections into a buffer of this size; later ones are not loaded.
constexpr std::size_t kSectionListSize = 2048;

TEST(Samples, TextsAreThereInEveryLanguage) {
  const std::string texts = Contents("module/Quillmar.lng");
  std::set<int> sections;
  AddNumbers(texts, "\\[([0-9]+)\\]\r\n", sections);
  EXPECT_EQ(sections, TextsThatTheModuleAsksFor());
  std::size_t listed = 1;
  for (const int number : sections) {
    listed += std::to_string(number).size() + 1;
    const auto section = texts.find("[" + std::to_string(number) + "]\r\n");
    const std::string body = texts.substr(section, texts.find("\r\n[", section) - section);
    for (const char* language : {"EN", "CZ", "DE"}) {
      EXPECT_TRUE(std::regex_search(body, std::regex(std::string(language) + "=[^\r]")))
          << number << language;
    }
  }
  EXPECT_LE(listed, kSectionListSize);
  // The file is in Windows-1250: a Czech letter is one byte.
  EXPECT_THAT(texts, testing::HasSubstr("CZ=Nastaven\xED\r\n"));
}

}  // namespace
}  // namespace hexaplan
