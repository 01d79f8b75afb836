#include "RecordedCall.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include "CoreLink.h"

namespace quillmar::strict {
namespace {

// Capacities of text outputs that have no size argument; the last byte of each is written.
const std::map<std::string, std::size_t> kFixedCapacities = {
    {"GetPart.partName", 1024},    {"GetAssembly.first", 1024},    {"GetAssembly.second", 260},
    {"GetAssemblyName.name", 260}, {"GetAssemblyPath.path", 1024}, {"GetDataWD.second", 10000},
};

// Text outputs that go in as well, and the characters of room behind what goes in.
const std::map<std::string, std::size_t> kRoomBehind = {{"CreatePreview.fileName", 10}};

// Functions that report the length of their list at the first call and succeed: the text itself is
// fetched by another function.
const std::set<std::string> kLengthOnly = {"GetPart"};

// Lists that were asked for once and whose second call is awaited.
std::set<std::string>& Awaited() {
  static std::set<std::string> awaited;
  return awaited;
}

std::vector<std::string> SplitNames(const char* names) {
  std::vector<std::string> split(1);
  for (; *names != '\0'; ++names) {
    if (*names == ',') {
      split.emplace_back();
    } else if (std::strchr("() \n\\", *names) == nullptr) {
      split.back() += *names;
    }
  }
  return split;
}

std::string Decimal(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

}  // namespace

RecordedCall::RecordedCall(const char* function, const char* argumentNames)
    : function(function),
      call(Core().Strict_BeginCall(function)),
      names(SplitNames(argumentNames)) {}

std::string RecordedCall::NextName() {
  return nextName < names.size() ? names[nextName++] : std::string();
}

void RecordedCall::Note(const std::string& argument) {
  Core().Strict_AddArgument(call, argument.c_str());
}

void RecordedCall::Violate(const std::string& promise) {
  sound = false;
  Core().Strict_Violate(function.c_str(), promise.c_str());
}

void RecordedCall::Take(const char* text) {
  const std::string name = NextName();
  if (text == nullptr) {
    Note("(null)");
    Violate("null " + name);
    return;
  }
  if (!std::exchange(hasKey, true)) key = text;
  Note(text);
}

void RecordedCall::Take(int number) {
  NextName();
  lastNumber = number;
  Note(std::to_string(number));
  if (!std::exchange(awaitsPairCount, false)) return;
  if (number < 0) Violate("a negative number of pairs");
  if (number > 0 && pairs == nullptr) Violate("pairs counted, none given");
  std::string shown;
  for (int i = 0; sound && i < number; ++i) {
    if (pairs[i].name == nullptr || pairs[i].value == nullptr) {
      Violate("a pair with a null text");
    } else {
      shown += std::string(pairs[i].name) + "=" + pairs[i].value + "\n";
    }
  }
  Note(shown);
}

void RecordedCall::Take(QmWindow window) {
  NextName();
  Note(std::to_string(window));
}

void RecordedCall::Take(double number) {
  NextName();
  Note(Decimal(number));
}

// As many numbers as the number argument before it says.
void RecordedCall::Take(const double* numbers) {
  const std::string name = NextName();
  if (numbers == nullptr && lastNumber > 0) Violate("null " + name);
  std::string shown;
  for (int i = 0; numbers != nullptr && i < lastNumber; ++i) shown += Decimal(numbers[i]) + ";";
  Note(shown);
}

// Noted behind their number.
void RecordedCall::Take(const ExtDataPair* given) {
  NextName();
  pairs = given;
  awaitsPairCount = true;
}

void RecordedCall::Take(char* text) {
  const std::string name = NextName();
  const auto room = kRoomBehind.find(function + "." + name);
  const bool goesIn = text != nullptr && room != kRoomBehind.end();
  Note(text == nullptr ? "(null)" : goesIn ? text : "out");
  if (text == nullptr) return Violate("null " + name);
  if (goesIn) text[std::strlen(text) + room->second] = '\0';
  texts.push_back({text, name});
}

template <class Number>
void RecordedCall::FillNumber(Number* output, Number (*convert)(const char*)) {
  const std::string name = NextName();
  Note(output == nullptr ? "(null)" : "out");
  if (output == nullptr) return Violate("null " + name);
  const char* answer = AnswerFor(name);
  *output = convert(answer == nullptr ? "0" : answer);
}

void RecordedCall::Take(int* number) {
  // A text output and a size make a list.
  if (!texts.empty() && nextName < names.size() && names[nextName] == "size") {
    NextName();
    if (number == nullptr) {
      Note("(null)");
      return Violate("null size");
    }
    Note(std::to_string(*number));
    lists.push_back({texts.back().buffer, number, texts.back().name});
    texts.pop_back();
    return;
  }
  FillNumber<int>(number, [](const char* text) { return std::atoi(text); });
}

void RecordedCall::Take(QmWindow* window) {
  FillNumber<QmWindow>(window, [](const char* text) {
    return static_cast<QmWindow>(std::strtoul(text, nullptr, 0));
  });
}

void RecordedCall::Take(double* number) {
  FillNumber<double>(number, [](const char* text) { return std::atof(text); });
}

void RecordedCall::Take(const void* pointer) {
  NextName();
  Note(pointer == nullptr ? "(null)" : "pointer");
}

const char* RecordedCall::AnswerFor(const std::string& output) const {
  const std::string keyed = function + "(" + key + ")." + output;
  const char* answer = Core().Strict_Answer(keyed.c_str());
  return answer != nullptr ? answer : Core().Strict_Answer((function + "." + output).c_str());
}

void RecordedCall::HandOutTexts() {
  for (const TextOutput& output : texts) {
    const auto capacity = kFixedCapacities.find(function + "." + output.name);
    if (capacity != kFixedCapacities.end()) output.buffer[capacity->second - 1] = '\0';
    if (const char* answer = AnswerFor(output.name)) std::strcpy(output.buffer, answer);
  }
}

// True when the text was handed out or its length was all that was wanted.
bool RecordedCall::HandOutList(const ListOutput& list) {
  if (*list.size < 1) {
    Violate("a list buffer without room");
    return false;
  }
  list.buffer[*list.size] = '\0';  // one byte more than the size is there
  const char* answer = AnswerFor(list.name);
  const std::string text = answer == nullptr ? "" : answer;
  const int needed = static_cast<int>(text.size());
  const int offered = std::exchange(*list.size, needed);
  const std::string asked = function + "(" + key + ")";
  if (kLengthOnly.count(function) > 0) {
    if (needed <= offered) std::strcpy(list.buffer, text.c_str());
    return true;
  }
  if (needed > 0 && Awaited().insert(asked).second) return false;
  Awaited().erase(asked);
  const char* again = Core().Strict_Answer((function + ".again").c_str());
  if (again != nullptr && std::atoi(again) == 0) return false;
  if (needed > offered) {
    Violate("a second call that offers less than was asked for");
    return false;
  }
  std::strcpy(list.buffer, text.c_str());
  return true;
}

int RecordedCall::Finish() {
  const char* answer = Core().Strict_Answer((function + "(" + key + ")").c_str());
  if (answer == nullptr) answer = Core().Strict_Answer(function.c_str());
  int result = answer == nullptr ? 1 : std::atoi(answer);
  if (!sound || Core().Strict_CallRefused(call) != 0) result = 0;
  if (result == 0) {
    for (const ListOutput& list : lists) *list.size = 0;
    Awaited().erase(function + "(" + key + ")");
  } else {
    HandOutTexts();
    for (const ListOutput& list : lists) {
      if (!HandOutList(list)) result = 0;
    }
  }
  Core().Strict_EndCall(call, result);
  return result;
}

}  // namespace quillmar::strict
