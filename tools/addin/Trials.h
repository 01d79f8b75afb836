// What is tried against an add-in, in a child process: steps, each told on standard output before
// it begins and with its verdict when it has ended.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tools {

// NotTried: the add-in gave nothing that could be judged; not counted as in order.
enum class Verdict { Ok, NotTried, Warning, Failure };

struct Judgement {
  Verdict verdict = Verdict::Ok;
  std::string text;
  std::vector<std::string> details{};  // lines below it
};

struct Step {
  std::string name;
  Verdict whenCrashed;  // Warning where the module itself never does such a thing
  std::function<Judgement()> run;
};

// A loaded add-in: its exports by name, null when they are missing.
using Exports = std::function<void*(const std::string&)>;

// Names of the trials: one for each function of the driver that is offered ("InsertPart": bad
// arguments), "exchange" (what is stored comes back) and "readers" (the two steps of list buffers).
inline constexpr const char* kExchangeTrial = "exchange";
inline constexpr const char* kReadersTrial = "readers";
std::vector<Step> StepsOf(const std::string& trial, const Exports& exports);

// Functions that wait for the user.
bool AsksUser(const std::string& function);

}  // namespace tools
