#include "addin/TrialRun.h"

#include <fmt/format.h>

#include <cstdio>

#include "addin/DriverFunctions.h"
#include "addin/System.h"
#include "common/Place.h"
#include "common/Program.h"

namespace tools {
namespace {

constexpr const char* kListTrial = "list";

// Lines of the child begin so, since the add-in may print lines of its own.
constexpr std::string_view kMark = "@@ ";
constexpr std::string_view kStep = "step ";
constexpr std::string_view kDetail = "detail ";
constexpr std::string_view kOffered = "offered ";
constexpr std::string_view kNotLoaded = "not loaded ";
constexpr std::string_view kVerdicts[] = {"ok ", "not tried ", "warning ", "failure "};

void Say(const std::string& line) {
  std::string text = std::string(kMark) + line;
  for (char& character : text) {
    if (character == '\n') character = ' ';
  }
  // On a line of its own, whatever the add-in left unfinished.
  fmt::print("\n{}\n", text);
  std::fflush(stdout);
}

// What stands behind `front`; true when the text begins with it.
bool Take(std::string_view& text, std::string_view front) {
  if (!text.starts_with(front)) return false;
  text.remove_prefix(front.size());
  return true;
}

std::vector<std::string_view> LinesOf(const std::string& output) {
  std::vector<std::string_view> lines;
  std::string_view rest = output;
  while (!rest.empty()) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (Take(line, kMark)) lines.push_back(line);
  }
  return lines;
}

ChildEnd RunTrialChild(const std::string& library, const std::string& trial, std::size_t first,
                       std::chrono::seconds limit) {
  return RunChild({"--trial", trial, "--first", std::to_string(first), library}, limit);
}

// A step that has begun.
struct Begun {
  std::string name;
  Verdict whenCrashed = Verdict::Failure;
  bool ended = true;
};

Begun ReadStep(std::string_view line) {
  const bool warning = line.starts_with('w');
  return {std::string(line.substr(2)), warning ? Verdict::Warning : Verdict::Failure, false};
}

// Adds what one child came to; the number of steps that it began.
std::size_t Gather(const ChildEnd& child, std::vector<Finding>& findings) {
  Begun step;
  std::size_t count = 0;
  for (std::string_view line : LinesOf(child.output)) {
    if (Take(line, kStep)) {
      step = ReadStep(line);
      ++count;
      continue;
    }
    if (!findings.empty() && Take(line, kDetail)) {
      findings.back().judgement.details.emplace_back(line);
      continue;
    }
    for (std::size_t i = 0; i < std::size(kVerdicts); ++i) {
      if (!Take(line, kVerdicts[i])) continue;
      findings.push_back({step.name, {static_cast<Verdict>(i), std::string(line)}});
      step.ended = true;
      break;
    }
  }
  if (!step.ended) findings.push_back({step.name, {step.whenCrashed, child.reason}});
  return count;
}

// An exception that leaves a function gets here where add-in and tool share a runtime; elsewhere it
// ends the process.
Judgement Judge(const Step& step) {
  try {
    return step.run();
  } catch (const std::exception& error) {
    return {step.whenCrashed, std::string("let an exception out: ") + error.what()};
  } catch (...) {
    return {step.whenCrashed, "let an exception out"};
  }
}

void RunSteps(const std::vector<Step>& steps, std::size_t first) {
  for (std::size_t i = first; i < steps.size(); ++i) {
    Say(fmt::format("{}{} {}", kStep, steps[i].whenCrashed == Verdict::Warning ? 'w' : 'f',
                    steps[i].name));
    const Judgement judgement = Judge(steps[i]);
    Say(std::string(kVerdicts[static_cast<std::size_t>(judgement.verdict)]) + judgement.text);
    for (const std::string& detail : judgement.details) Say(std::string(kDetail) + detail);
  }
}

// Nothing when the library cannot be loaded, which it has told then.
Exports LoadHere(const std::string& library) {
  CrashQuietly();
  std::string reason;
  void* loaded = LoadAddin(library, reason);
  if (loaded != nullptr) {
    return [loaded](const std::string& name) { return FindExport(loaded, name); };
  }
  Say(std::string(kNotLoaded) + reason);
  return {};
}

}  // namespace

int RunTrialHere(const std::string& library, const std::string& trial, std::size_t first) {
  const Exports exports = LoadHere(library);
  if (!exports) return kDone;
  if (trial == kListTrial) {
    for (const DriverFunction& function : DriverFunctions()) {
      if (exports(function.name) != nullptr) Say(std::string(kOffered) + function.name);
    }
    return kDone;
  }
  RunSteps(StepsOf(trial, exports), first);
  return kDone;
}

int RunTryOutHere(const std::string& library, const std::string& image, const TryOutPlace& place) {
  // Before the machine is entered: the path is one of the system.
  const Exports exports = LoadHere(library);
  if (!exports || !EnterImage(image)) return kDone;
  RunSteps(TryOutSteps(library, exports, place), 0);
  return kDone;
}

std::vector<std::string> OfferedFunctions(const std::string& library, std::chrono::seconds limit) {
  const ChildEnd child = RunTrialChild(library, kListTrial, 0, limit);
  std::vector<std::string> functions;
  for (std::string_view line : LinesOf(child.output)) {
    if (Take(line, kNotLoaded)) throw ToolError(fmt::format("It cannot be loaded: {}", line));
    if (Take(line, kOffered)) functions.emplace_back(line);
  }
  if (!child.reason.empty()) throw ToolError("Loading it " + child.reason);
  return functions;
}

std::vector<Finding> RunTryOut(const std::string& library, const std::string& image,
                               const TryOutPlace& place, std::chrono::seconds limit) {
  const MachineCopy machine(image);
  std::vector<Finding> findings;
  const ChildEnd child = RunChild({"--try-here", "--image", machine.Image(), "--module",
                                   place.module, "--suite", place.suite, library},
                                  limit);
  Gather(child, findings);
  const bool isTold = !findings.empty() && findings.back().judgement.text == child.reason;
  if (!child.reason.empty() && !isTold) {
    findings.push_back({"The end of the process", {Verdict::Failure, child.reason}});
  }
  return findings;
}

std::vector<Finding> RunTrial(const std::string& library, const std::string& trial,
                              std::chrono::seconds limit) {
  std::vector<Finding> findings;
  std::size_t first = 0;
  for (;;) {
    const ChildEnd child = RunTrialChild(library, trial, first, limit);
    const std::size_t begun = Gather(child, findings);
    if (child.reason.empty()) return findings;
    if (begun == 0) {
      // Before the first step: while the specimen was inserted, or at the end of the process.
      findings.push_back({trial, {Verdict::Failure, child.reason}});
      return findings;
    }
    first += begun;
  }
}

}  // namespace tools
