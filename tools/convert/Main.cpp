// quillmar-convert: brings all protocols of a store to the current layout, or back to the older
// one.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <functional>
#include <map>

#include "common/Place.h"
#include "common/Program.h"
#include "common/Terminal.h"
#include "convert/Conversion.h"
#include "convert/Journal.h"

namespace tools {
namespace {

volatile std::sig_atomic_t interrupted = 0;

struct Options {
  StorePlace place;
  bool up = false;
  bool down = false;
  bool apply = false;
  bool verbose = false;
  std::string settings;
  std::string mappingFile = "C:\\Vantorel\\Quillmar\\ProtConv.ini";
  std::string folder;  // of the runs, in the system; empty: beside the store
  std::string report;
};

struct Report {
  std::string text;
  std::map<std::string, int> sums;
  std::size_t obstacles = 0;

  void Add(const Outcome& outcome, bool verbose) {
    const std::string name =
        fmt::format("{:<25} {:<12}", ForUser(outcome.id), ForUser(outcome.kind));
    if (!outcome.obstacle.empty()) {
      ++obstacles;
      text += fmt::format("{} {} left alone: {}\n", name, outcome.before, outcome.obstacle);
    } else if (outcome.IsChange()) {
      ++sums[fmt::format("{} -> {}", outcome.before, outcome.after)];
      text += fmt::format("{} {} -> {}  {}", name, outcome.before, outcome.after,
                          Counted(outcome.differences.size(), "change"));
      if (outcome.newProtocols > 0)
        text += ", split: " + Counted(outcome.newProtocols, "new protocol");
      text += '\n';
      if (verbose) {
        for (const std::string& line : outcome.differences) text += "    " + line + "\n";
      }
    } else {
      ++sums["unchanged"];
    }
  }

  std::string Sum() const {
    std::string line;
    for (const auto& [what, count] : sums) line += fmt::format("{}: {}, ", what, count);
    return line + fmt::format("left alone: {}", obstacles);
  }
};

// Treats the protocols one after another until the user interrupts; a failure of one is its
// obstacle.
Report ForEach(const std::string& what, const std::vector<std::string>& ids, bool verbose,
               const std::function<Outcome(const std::string&)>& treat) {
  Report report;
  ProgressBar progress(what, ids.size());
  for (const std::string& id : ids) {
    if (interrupted != 0) break;
    Outcome outcome;
    try {
      outcome = treat(id);
    } catch (const ToolError& error) {
      outcome.id = id;
      outcome.obstacle = error.what();
    }
    report.Add(outcome, verbose);
    progress.Step();
  }
  return report;
}

bool WriteReport(const Options& options, const std::string& text) {
  return options.report.empty() || WriteSystemFile(options.report, text);
}

int End(const Report& report) {
  if (interrupted != 0) {
    Complain("Interrupted. What was converted is stored; the same command goes on.");
    return kInterrupted;
  }
  return report.obstacles == 0 ? kDone : kFound;
}

int Run(const Options& options) {
  const StoreAccess store(options.place);
  const Direction direction{!options.down, FromUser(options.settings),
                            FromUser(options.mappingFile)};
  const auto ids = store.Ids();
  const Style style = StyleOf(Stream::Output);
  std::string told;
  const auto tell = [&](const std::string& heading, const Report& report) {
    Tell(style.Heading(heading));
    Tell(report.text + report.Sum());
    told += heading + "\n" + report.text + report.Sum() + "\n";
  };

  DryRun dryRun(store, direction);
  const Report foreseen = ForEach("Dry run", ids, options.verbose,
                                  [&](const std::string& id) { return dryRun.Try(id); });
  tell("What the conversion will do", foreseen);
  // Before anything is changed: who wants it told must not find out afterwards that it was not.
  RequireOutput();
  if (!WriteReport(options, told)) throw ToolError("Cannot write " + options.report);
  if (!options.apply) {
    Tell("Nothing was changed (--apply converts).");
    return End(foreseen);
  }
  if (interrupted != 0) return End(foreseen);

  const std::string parent = options.folder.empty()
                                 ? SystemPath(store.SuiteFolder() + "\\Conversion").string()
                                 : options.folder;
  Journal journal(parent, fmt::format("{}\t{}", options.down ? "down" : "up", direction.settings),
                  ids);
  std::vector<std::string> open;
  for (const std::string& id : ids) {
    // What came since an interrupted run began is a leftover of it, or waits for the next run.
    if (!journal.IsDone(id) && !journal.IsUnknown(id)) open.push_back(id);
  }
  if (journal.IsResumed()) Tell("An interrupted conversion is taken up.");
  Conversion conversion(store, direction, journal);
  const Report done = ForEach("Converting", open, options.verbose,
                              [&](const std::string& id) { return conversion.Convert(id); });
  tell("What was done", done);
  if (interrupted == 0 && !journal.IsAnyBegun()) journal.Finish();
  Tell("The protocols as they were: " + journal.Folder());
  const int status = End(done);
  if (WriteReport(options, told)) return status;
  Complain(fmt::format("What was converted is stored, but {} cannot be written", options.report));
  return std::max(status, kFound);
}

}  // namespace
}  // namespace tools

int main(int count, char** arguments) {
  tools::Options options;
  CLI::App app(
      "Converts all protocols of a store to the current layout, or back to the older one. A dry "
      "run\n"
      "comes first; without --apply nothing else does. Each protocol is kept as a reference text\n"
      "before it is touched, and a journal tells what is done: after an interruption, whatever "
      "its\n"
      "cause, the same command goes on, and nothing is lost. quillmar-store import --replace takes "
      "a\n"
      "kept text back.",
      "quillmar-convert");
  options.place.AddOptions(app);
  auto* up = app.add_flag("--up", options.up, "To the current layout (2)");
  auto* down = app.add_flag("--down", options.down, "To the older layout (1)");
  up->excludes(down);
  app.add_option("--settings", options.settings,
                 "Settings name that the add-in logs in with: the view keys depend on it")
      ->required();
  app.add_flag("--apply", options.apply, "Convert after the dry run");
  app.add_flag("--verbose", options.verbose, "Show each changed value");
  app.add_option("--mapping", options.mappingFile, "Mapping file of view keys on the machine")
      ->capture_default_str();
  app.add_option("--journal", options.folder,
                 "Folder for kept texts and journals (default: Conversion in the suite folder; "
                 "made when missing)");
  app.add_option("--report", options.report,
                 "Write the report to this file too (a missing folder is made)");
  app.footer("3 interrupted: the same command goes on.");
  return tools::RunProgram(app, count, arguments, [&] {
    if (!options.up && !options.down) throw tools::ToolError("Say --up or --down");
    std::signal(SIGINT, [](int) { tools::interrupted = 1; });
    std::signal(SIGTERM, [](int) { tools::interrupted = 1; });
    return tools::Run(options);
  });
}
