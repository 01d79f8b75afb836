#include "FaultyCompanions.h"

#include <string_view>

#include "quillmar/CalculationHost.h"

namespace quillmar::test {
namespace {

StorageTable realStorage;
LinkTable realLinks;

// What goes in behind the protocol's identifier, joined by "|".
class Line {
 public:
  void Add(const char* text) { AddText(text != nullptr ? text : "(null)"); }
  void Add(int number) { AddText(std::to_string(number)); }
  void Add(const void*) {}
  void Add(void*) {}
  std::string Text() const { return text; }

 private:
  void AddText(const std::string& argument) {
    if (count++ == 0) return;
    text += (count == 2 ? " " : "|") + argument;
  }
  std::string text;
  int count = 0;
};

void AddOne(Line& line, const char* text) { line.Add(text); }
void AddOne(Line& line, short number) { line.Add(static_cast<int>(number)); }
void AddOne(Line& line, int number) { line.Add(number); }
void AddOne(Line&, const void*) {}
// Identifiers that may be written over come as buffers.
void AddOne(Line&, char*) {}

// The values that are written are the last texts of a call and not looked at here.
constexpr struct {
  const char* call;
  int writtenTexts;
} kWrites[] = {{"Com_PutKeyWord", 1}, {"Com_PutGlobalData", 1}, {"Com_PutDataParam", 2}};

template <class... Argument>
std::string Joined(const char* name, Argument... argument) {
  Line line;
  int left = sizeof...(Argument);
  for (const auto& row : kWrites) {
    if (std::string_view(name) == row.call) left -= row.writtenTexts;
  }
  ((left-- > 0 ? AddOne(line, argument) : void()), ...);
  return name + line.Text();
}

#define QM_PACK(...) __VA_ARGS__
#define QM_UNPACK(arguments) QM_PACK arguments

#define QM_FAULTY_STORAGE(name, result, parameters, arguments)              \
  result QM_STDCALL Faulty_##name parameters {                              \
    if (!Calls::Get().Allow(Joined(#name, QM_UNPACK(arguments)))) return 0; \
    return realStorage.name arguments;                                      \
  }
QM_STORAGE_FUNCTIONS(QM_FAULTY_STORAGE)
#define QM_FAULTY_LINK(name, result, parameters, arguments)                 \
  result QM_STDCALL Faulty_##name parameters {                              \
    if (!Calls::Get().Allow(Joined(#name, QM_UNPACK(arguments)))) return 0; \
    return realLinks.name arguments;                                        \
  }
QM_LINK_FUNCTIONS(QM_FAULTY_LINK)

#define QM_FAULTY_DRIVER(need, name, result, parameters, arguments) \
  result QM_CDECL Faulty_##name parameters {                        \
    [](auto&&...) {} arguments;                                     \
    return Calls::Get().Allow("cad " #name) ? 1 : 0;                \
  }
QM_CAD_FUNCTIONS(QM_FAULTY_DRIVER)

}  // namespace

Calls& Calls::Get() {
  static Calls calls;
  return calls;
}

void Calls::Begin(int failingCall, Mode failureMode) {
  lines.clear();
  failing = failingCall;
  mode = failureMode;
}

bool Calls::Allow(std::string line) {
  lines.push_back(std::move(line));
  const int number = static_cast<int>(lines.size());
  if (failing == 0) return true;
  return mode == Mode::Once ? number != failing : number < failing;
}

StorageTable FaultyStorage(const StorageTable& real) {
  realStorage = real;
  StorageTable table;
#define QM_SET(name, result, parameters, arguments) table.name.pointer = &Faulty_##name;
  QM_STORAGE_FUNCTIONS(QM_SET)
#undef QM_SET
  return table;
}

LinkTable FaultyLinks(const LinkTable& real) {
  realLinks = real;
  LinkTable table;
#define QM_SET(name, result, parameters, arguments) table.name.pointer = &Faulty_##name;
  QM_LINK_FUNCTIONS(QM_SET)
#undef QM_SET
  return table;
}

CadDriverTable FaultyDriver() {
  CadDriverTable table;
#define QM_SET_REQUIRED(name) table.name.pointer = &Faulty_##name;
#define QM_SET_OPTIONAL(name) static_cast<void>(&Faulty_##name);
#define QM_SET(need, name, result, parameters, arguments) QM_SET_##need(name)
  QM_CAD_FUNCTIONS(QM_SET)
#undef QM_SET
#undef QM_SET_REQUIRED
#undef QM_SET_OPTIONAL
  table.addIn = &table;
  return table;
}

platform::AutomationResult FaultyHost::Call(int identifier, const platform::AutomationArguments&) {
  if (!Calls::Get().Allow("host " + std::to_string(identifier))) return {};
  platform::AutomationResult result{platform::AutomationStatus::Done, 1, {}};
  if (identifier == QM_HOST_CALLBACK_CODE) result.value = callbackCode;
  if (identifier == QM_HOST_CALLBACK_LIST) result.value = callbackList;
  return result;
}

}  // namespace quillmar::test
