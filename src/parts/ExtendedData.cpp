#include "parts/ExtendedData.h"

#include <algorithm>

#include "base/Texts.h"
#include "naming/NameTemplate.h"
#include "naming/NameTokens.h"
#include "platform/System.h"

namespace quillmar {
namespace {

constexpr std::size_t kDefaultTags = 3;
constexpr std::string_view kBomToken = "%BOM";

std::string Numbered(const char* front, int number, const char* back = "") {
  return front + std::to_string(number) + back;
}

// What the user wrote into a field, else what the calculation did.
std::string UserOrCalculated(VXProtocol& protocol, int number) {
  std::string value;
  protocol.GetGlobalData(Numbered("BOM", number, "User"), value);
  if (value.empty()) protocol.GetBom(number, value);
  return value;
}

// A field that the calculation fixed for the CAD goes before both.
std::string FixedOrUserOrCalculated(VXProtocol& protocol, int number) {
  std::string value;
  std::string unit;
  if (protocol.GetDataParam(Numbered("VXP_ED_BOM", number), value, unit)) return value;
  return UserOrCalculated(protocol, number);
}

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t hits = 0;
  for (auto hit = text.find(part); hit != std::string_view::npos;
       hit = text.find(part, hit + part.size())) {
    ++hits;
  }
  return hits;
}

// Fills one field of a template in, wherever it stands. Values that hold fields in turn must not
// blow the text up: what would take it beyond the bound is left out.
void FillField(std::string& text, const std::string& field, const std::string& value) {
  const std::size_t hits = CountOf(text, field);
  const bool mayGoOn = hits > 1 || value.find('%') != std::string::npos;
  if (mayGoOn && text.size() + hits * value.size() > kMaxNestedLength) return;
  text = ReplaceAll(text, field, value);
}

void FillTagFields(VXProtocol& protocol, int tagCount, std::string& text) {
  for (int number = 1; number <= tagCount; ++number) {
    const std::string field = Numbered("%BOM", number, "%");
    if (text.find(field) == std::string::npos) continue;
    FillField(text, field, UserOrCalculated(protocol, number));
  }
}

// Ends when a pass leaves the first field where it was; a field whose value puts itself further
// and further back would never do so, hence the bound.
void FillFurtherFields(VXProtocol& protocol, std::string& text) {
  auto place = text.find(kBomToken);
  for (int pass = 0; place != std::string::npos && pass < kMaxNestedValues; ++pass) {
    const int number = ParseInt(std::string_view(text).substr(place + kBomToken.size()));
    FillField(text, Numbered("%BOM", number, "%"), FixedOrUserOrCalculated(protocol, number));
    const auto before = place;
    place = text.find(kBomToken);
    if (place == before) break;
  }
}

class TagValues {
 public:
  TagValues(const PartServices& services, VXProtocol& protocol)
      : services(services), protocol(protocol) {}

  std::string ValueOf(std::size_t index) const {
    const OptionsStore& options = services.options;
    return index < kDefaultTags && options.DefaultTags()
               ? DefaultValue(static_cast<int>(index) + 1)
               : TemplateValue(options.Tags()[index].text);
  }

 private:
  std::string DefaultValue(int number) const {
    std::string value;
    protocol.GetBom(number, value);
    value = Cased(value);
    protocol.PutGlobalData(Numbered("BOM", number), value);
    return value;
  }

  std::string TemplateValue(std::string text) const {
    const std::size_t tagCount = std::max(services.options.Tags().size(), kDefaultTags);
    FillTagFields(protocol, static_cast<int>(tagCount), text);
    FillFurtherFields(protocol, text);
    if (text.find('%') != std::string::npos) {
      text = ExpandNameTemplate(text, protocol, services.ids);
    }
    return Cased(text);
  }

  std::string Cased(const std::string& text) const {
    return services.options.UpperCase() ? platform::UpperCase(text) : text;
  }

  const PartServices& services;
  VXProtocol& protocol;
};

}  // namespace

ExtDataPairs BuildExtendedData(const PartServices& services, VXProtocol& protocol) {
  const std::vector<BomTag>& tags = services.options.Tags();
  const TagValues values(services, protocol);
  ExtDataPairs pairs;
  pairs.Reserve(static_cast<int>(tags.size()));
  for (std::size_t i = 0; i < tags.size(); ++i) {
    pairs.Append(services.tags.NameInCad(tags[i].name), values.ValueOf(i));
  }
  return pairs;
}

}  // namespace quillmar
