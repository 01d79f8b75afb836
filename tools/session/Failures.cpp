#include "session/Failures.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace session {
namespace {

using Calls = std::vector<quillmar::recorder::TracedCall>;
using quillmar::recorder::TextOfArgument;
using quillmar::recorder::TracedCall;

constexpr std::string_view kFailures[] = {"failed", "gone", "unknown member"};
constexpr std::string_view kFailureBegins[] = {"raised", "threw", "made to fail"};
// A program that ends well, and a CAD without a window, answer 0.
constexpr std::string_view kWindowQuestions[] = {"GetMainHwnd", "GetMainHwndForActivation"};

// The protocols that each process has open.
class OpenProtocols {
 public:
  // Before the call is taken note of: whether it closes one that is open.
  bool IsOpen(const TracedCall& call) const {
    const auto process = open.find(call.process);
    return process != open.end() && process->second.count(Identifier(call, 0)) != 0;
  }
  void Follow(const TracedCall& call) {
    if (call.result != "1") return;
    if (call.function == "Com_OpenProtocol") open[call.process].insert(Identifier(call, 0));
    if (call.function == "Com_CopyProtocol") open[call.process].insert(Identifier(call, 1));
    if (call.function == "Com_CloseProtocol" || call.function == "Com_EraseProtocol") {
      open[call.process].erase(Identifier(call, 0));
    }
  }

 private:
  static std::string Identifier(const TracedCall& call, std::size_t place) {
    if (place >= call.arguments.size()) return {};
    return TextOfArgument(call.arguments[place]).value_or(std::string());
  }

  std::map<std::uint32_t, std::set<std::string>> open;
};

bool IsQuestion(const TracedCall& call) {
  return call.function.find("_Get") != std::string::npos ||
         call.function.find("_Is") != std::string::npos || call.function == call.to ||
         std::find(std::begin(kWindowQuestions), std::end(kWindowQuestions), call.function) !=
             std::end(kWindowQuestions);
}

// The same list is asked for once more and then given.
bool IsAskedAgain(const Calls& calls, std::size_t place) {
  const TracedCall& call = calls[place];
  if (!call.function.starts_with("Get")) return false;
  const auto next = std::find_if(
      calls.begin() + static_cast<std::ptrdiff_t>(place) + 1, calls.end(), [&](const auto& each) {
        return each.process == call.process && each.from == call.from && each.to == call.to;
      });
  return next != calls.end() && next->function == call.function && next->result != "0";
}

}  // namespace

std::vector<bool> FailedCalls(const Calls& calls) {
  std::vector<bool> failed;
  failed.reserve(calls.size());
  OpenProtocols open;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    const TracedCall& call = calls[i];
    const auto isBegin = [&](std::string_view begin) { return call.result.starts_with(begin); };
    bool bad =
        std::find(std::begin(kFailures), std::end(kFailures), call.result) != std::end(kFailures) ||
        std::any_of(std::begin(kFailureBegins), std::end(kFailureBegins), isBegin);
    if (call.result == "0") {
      bad = call.function == "Com_CloseProtocol" ? open.IsOpen(call)
                                                 : !IsQuestion(call) && !IsAskedAgain(calls, i);
    }
    failed.push_back(bad);
    open.Follow(call);
  }
  return failed;
}

}  // namespace session
