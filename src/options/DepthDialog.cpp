#include "options/DepthDialog.h"

#include <algorithm>

#include "base/Texts.h"
#include "platform/Registry.h"

namespace quillmar {
namespace {

using platform::FieldKind;
using platform::Form;
using platform::FormField;

constexpr int kTemplate = 4003;
constexpr int kParentsControl = 101;
constexpr int kChildrenControl = 102;

constexpr int kTextNone = 45;
constexpr int kTextAll = 46;
constexpr int kTextNoDepth = 47;
constexpr int kTitle = 4143;

constexpr const char* kSection = "OptGeneral";
constexpr const char* kFields[] = {"DepthParIdx", "DepthChiIdx"};

std::vector<std::string> Items(const std::set<int>& numbers, const LanguageTable& texts) {
  std::vector<std::string> items = {texts.GetText(kTextNone)};
  for (const int number : numbers) items.push_back(std::to_string(number));
  items.push_back(texts.GetText(kTextAll));
  return items;
}

FormField DepthField(const OptionsStore& options, const char* name, int control,
                     const std::vector<std::string>& items) {
  const int last = static_cast<int>(items.size()) - 1;
  const int index = options.ReadOptionInt(kSection, name, last);
  return {.kind = FieldKind::Entry,
          .name = name,
          .control = control,
          .number = index < 0 || index > last ? last : index,
          .items = items};
}

// A number that was typed; nothing for 0 and for what is no number.
std::optional<int> TypedNumber(const std::string& text) {
  const bool digits = !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
    return character >= '0' && character <= '9';
  });
  const int number = digits ? ParseInt(text) : 0;
  return number > 0 ? std::optional(number) : std::nullopt;
}

// Puts typed numbers into both lists. False, with the user told, when one is no depth.
bool TakeTypedNumbers(Form& form, std::set<int>& numbers, const LanguageTable& texts) {
  for (const char* name : kFields) {
    const FormField& field = form.Field(name);
    if (field.number >= 0) continue;
    const auto typed = TypedNumber(field.text);
    if (!typed) {
      platform::ShowMessage(texts.GetText(kTextNoDepth), form.title, platform::MessageIcon::None);
      return false;
    }
    numbers.insert(*typed);
  }
  const std::vector<std::string> items = Items(numbers, texts);
  for (const char* name : kFields) {
    FormField& field = form.Field(name);
    const std::string chosen = field.number >= 0
                                   ? field.items[static_cast<std::size_t>(field.number)]
                                   : std::to_string(ParseInt(field.text));
    field.items = items;
    field.number = static_cast<int>(std::find(items.begin(), items.end(), chosen) - items.begin());
  }
  return true;
}

int DepthOf(const FormField& field) {
  const auto index = static_cast<std::size_t>(field.number);
  if (index == 0) return 0;
  return index + 1 == field.items.size() ? -1 : ParseInt(field.items[index]);
}

void Store(const OptionsStore& options, Form& form, const std::set<int>& numbers) {
  std::string values;
  for (const int number : numbers) {
    values.append(values.empty() ? "" : ",").append(std::to_string(number));
  }
  platform::RegistryBatch together(platform::Hive::CurrentUser);
  options.WriteOptionText(kSection, "DepthValues", values);
  for (const char* name : kFields) {
    options.WriteOptionInt(kSection, name, form.Field(name).number);
  }
  together.Commit();
}

}  // namespace

std::set<int> OfferedDepths(const OptionsStore& options) {
  std::set<int> numbers;
  const std::string stored = options.ReadOptionText(kSection, "DepthValues", "1,2,3");
  for (const std::string& piece : SplitKeepingEmpty(stored, ',')) {
    if (const int number = ParseInt(piece); number > 0) numbers.insert(number);
  }
  return numbers;
}

std::optional<Depths> AskDepths(const OptionsStore& options, const LanguageTable& texts,
                                platform::DialogSurroundings surroundings) {
  surroundings.translate = [&texts](QmWindow dialog) { texts.TranslateWindow(dialog); };
  std::set<int> numbers = OfferedDepths(options);
  const std::vector<std::string> items = Items(numbers, texts);
  Form form{.title = texts.GetText(kTitle),
            .dialogTemplate = kTemplate,
            .fields = {DepthField(options, kFields[0], kParentsControl, items),
                       DepthField(options, kFields[1], kChildrenControl, items)},
            .accept = [&](Form& edited) { return TakeTypedNumbers(edited, numbers, texts); }};
  if (!platform::ShowForm(surroundings, form)) return std::nullopt;
  Store(options, form, numbers);
  return Depths{DepthOf(form.fields[0]), DepthOf(form.fields[1])};
}

}  // namespace quillmar
