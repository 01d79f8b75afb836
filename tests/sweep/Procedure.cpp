#include "Procedure.h"

#include <algorithm>
#include <stdexcept>

namespace quillmar::test {
namespace {

std::size_t PlaceOf(const Procedure& procedure, const std::string& label) {
  if (label == kEnd) return procedure.size();
  const auto found = std::find_if(procedure.begin(), procedure.end(),
                                  [&](const Step& step) { return label == step.label; });
  if (found == procedure.end()) throw std::logic_error("no step is labelled " + label);
  return static_cast<std::size_t>(found - procedure.begin());
}

}  // namespace

Expectation Follow(const Procedure& procedure, int failing, Mode mode) {
  Expectation expected;
  for (std::size_t place = 0; place < procedure.size();) {
    const Step& step = procedure[place];
    bool fails = true;
    if (!step.call.empty()) {
      expected.calls.push_back(step.call);
      const int number = static_cast<int>(expected.calls.size());
      const bool isDue =
          failing != 0 && (mode == Mode::Once ? number == failing : number >= failing);
      fails = step.missing || (isDue && !(step.askedAgain && mode == Mode::Once));
    }
    if (fails)
      expected.reports.insert(expected.reports.end(), step.reports.begin(), step.reports.end());
    const std::string next = fails ? step.onFailure : step.onSuccess;
    place = next.empty() ? place + 1 : PlaceOf(procedure, next);
  }
  return expected;
}

}  // namespace quillmar::test
