#include "Procedure.h"

#include <algorithm>
#include <set>
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

// Walks a table with one call failing, or all from one on.
class Walk {
 public:
  Walk(int failing, Mode mode) : failing(failing), mode(mode) {}

  // False when the step fails.
  bool Take(const Step& step) {
    const bool unready = !step.object.empty() && ready.count(step.object) == 0;
    if (unready && (step.effect == Effect::None || step.effect == Effect::Fills ||
                    step.effect == Effect::Erases)) {
      Report({kNotReady});
      if (!step.reports.empty()) Report({step.reports.begin() + 1, step.reports.end()});
      return false;
    }
    const bool succeeds =
        !step.call.empty() && Call(step) && !(unready && step.effect == Effect::Any);
    if (!succeeds) Report(step.reports);
    if (step.result != 0) expected.result = step.result;
    Apply(step, succeeds);
    return succeeds;
  }

  Expectation expected;

 private:
  bool Call(const Step& step) {
    expected.calls.push_back(step.call);
    const int number = static_cast<int>(expected.calls.size());
    const bool isDue = failing != 0 && (mode == Mode::Once ? number == failing : number >= failing);
    if (isDue && !(step.askedAgain && mode == Mode::Once)) return false;
    return !step.missing && !(step.reads && empty.count(step.object) != 0);
  }

  void Report(const std::vector<std::string>& reports) {
    expected.reports.insert(expected.reports.end(), reports.begin(), reports.end());
  }

  void Apply(const Step& step, bool succeeded) {
    const bool opens = step.effect == Effect::Opens || step.effect == Effect::Creates;
    if (opens && succeeded) ready.insert(step.object);
    if (step.effect == Effect::Erases || (opens && !succeeded)) ready.erase(step.object);
    if (step.effect == Effect::Creates) empty.insert(step.object);
    if (step.effect == Effect::Fills && succeeded) empty.erase(step.object);
  }

  int failing;
  Mode mode;
  std::set<std::string> ready;
  std::set<std::string> empty;
};

}  // namespace

Procedure Joined(std::initializer_list<Procedure> pieces) {
  Procedure steps;
  for (const Procedure& piece : pieces) steps.insert(steps.end(), piece.begin(), piece.end());
  return steps;
}

Procedure Block(std::initializer_list<Procedure> pieces) {
  static int blocks = 0;
  const std::string mark = "#" + std::to_string(++blocks);
  Procedure steps = Joined(pieces);
  std::set<std::string> own;
  for (const Step& step : steps) own.insert(step.label);
  own.erase("");
  for (Step& step : steps) {
    for (std::string* label : {&step.label, &step.onFailure, &step.onSuccess}) {
      if (own.count(*label) != 0) *label += mark;
    }
  }
  return steps;
}

Procedure On(const std::string& object, std::initializer_list<Procedure> pieces) {
  Procedure steps = Block(pieces);
  for (Step& step : steps) {
    if (step.object == kThis) step.object = object;
  }
  return steps;
}

Expectation Follow(const Procedure& procedure, int failing, Mode mode) {
  Walk walk(failing, mode);
  for (std::size_t place = 0; place < procedure.size();) {
    const Step& step = procedure[place];
    const bool succeeded = walk.Take(step);
    const std::string& next = succeeded ? step.onSuccess : step.onFailure;
    place = next.empty() ? place + 1 : PlaceOf(procedure, next);
  }
  return walk.expected;
}

}  // namespace quillmar::test
