#include "addin/Inspection.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "addin/DriverFunctions.h"
#include "addin/Losses.h"
#include "addin/TrialRun.h"
#include "common/Place.h"
#include "common/Program.h"
#include "common/Terminal.h"

namespace tools {
namespace {

constexpr std::chrono::seconds kTryOutLimit{60};

using Names = std::vector<std::string>;

bool Offers(const Names& offered, const std::string& name) {
  return std::find(offered.begin(), offered.end(), name) != offered.end();
}

struct Group {
  const char* heading;
  bool isDrawing;
  const char* withoutRequired;
};

constexpr Group kGroups[] = {
    {"Functions of LoginCad", false, "LoginCad fails"},
    {"Drawing functions of Set2dFileType", true,
     "Set2dFileType fails and ends the use of the add-in: do not call it"},
};

// False when a required function of the group is missing.
bool TellGroup(const Group& group, const Names& offered, const Style& style) {
  std::size_t count = 0;
  std::size_t all = 0;
  bool complete = true;
  std::string missing;
  for (const DriverFunction& function : DriverFunctions()) {
    if (function.isDrawing != group.isDrawing) continue;
    ++all;
    if (Offers(offered, function.name)) {
      ++count;
      continue;
    }
    complete = complete && !function.isRequired;
    missing += function.isRequired
                   ? style.Bad(fmt::format("  {:<26} required: {}\n", function.name,
                                           group.withoutRequired))
                   : fmt::format("  {:<26} {}\n", function.name, LossWithout(function.name));
  }
  Tell(style.Heading(fmt::format("{}: {} of {}", group.heading, count, all)));
  if (!missing.empty()) Tell("Missing, and what is lost:\n" + missing);
  return complete;
}

Names TrialsOf(const Inspection& inspection, const Names& offered) {
  Names trials = {kExchangeTrial, kReadersTrial};
  for (const std::string& name : offered) {
    if (inspection.interactive || !AsksUser(name)) trials.push_back(name);
  }
  return trials;
}

std::string Judged(const Finding& finding, const Style& style) {
  const std::string line =
      finding.judgement.text.empty() ? finding.step : finding.step + ": " + finding.judgement.text;
  switch (finding.judgement.verdict) {
    case Verdict::Failure:
      return style.Bad("  FAILURE  " + line);
    case Verdict::Warning:
      return style.Warning("  warning  " + line);
    case Verdict::NotTried:
      return "  not tried " + line;
    default:
      return style.Good("  ok       ") + line;
  }
}

// What was not tried is told once, by the step that says why.
bool IsWorthTelling(const Judgement& judgement) {
  return judgement.verdict > Verdict::NotTried ||
         (judgement.verdict == Verdict::NotTried && !judgement.text.empty());
}

// True when nothing failed.
bool TellTrials(const Inspection& inspection, const Names& offered, const Style& style) {
  std::vector<Finding> findings;
  {
    const Names trials = TrialsOf(inspection, offered);
    ProgressBar progress("Trying", trials.size());
    for (const std::string& trial : trials) {
      for (Finding& finding : RunTrial(inspection.library, trial, inspection.limit)) {
        findings.push_back(std::move(finding));
      }
      progress.Step();
    }
  }
  Tell(style.Heading("Trials"));
  std::array<std::size_t, 4> counts{};
  for (const Finding& finding : findings) {
    ++counts[static_cast<std::size_t>(finding.judgement.verdict)];
    if (inspection.verbose || IsWorthTelling(finding.judgement)) {
      Tell(Judged(finding, style));
    }
  }
  const auto [good, untried, warnings, failures] = counts;
  Tell(fmt::format("{}: {} in order, {} not tried, {}, {}", Counted(findings.size(), "trial"), good,
                   untried, Counted(warnings, "warning"), Counted(failures, "failure")));
  return failures == 0 && (!inspection.strict || warnings == 0);
}

}  // namespace

int TryOut(const std::string& library, const std::string& image, const TryOutPlace& place) {
  // For a missing or damaged file to be told as such.
  OfferedFunctions(library, kTryOutLimit);
  const Style style = StyleOf(Stream::Output);
  bool good = true;
  for (const Finding& finding : RunTryOut(library, image, place, kTryOutLimit)) {
    Tell(Judged(finding, style));
    for (const std::string& detail : finding.judgement.details) Tell("             " + detail);
    good = good && finding.judgement.verdict == Verdict::Ok;
  }
  return good ? kDone : kFound;
}

int Inspect(const Inspection& inspection) {
  const Style style = StyleOf(Stream::Output);
  const Names offered = OfferedFunctions(inspection.library, inspection.limit);
  if (offered.empty()) throw ToolError("It offers no function of the CAD driver");
  bool good = TellGroup(kGroups[0], offered, style);
  // An add-in may do without drawings altogether.
  TellGroup(kGroups[1], offered, style);
  if (inspection.trials) good = TellTrials(inspection, offered, style) && good;
  return good ? kDone : kFound;
}

}  // namespace tools
