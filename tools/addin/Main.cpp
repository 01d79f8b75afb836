// quillmar-addin: the conformance check that an author of a CAD add-in runs.
#include <CLI/CLI.hpp>

#include "addin/Inspection.h"
#include "addin/TrialRun.h"
#include "common/Program.h"

int main(int count, char** arguments) {
  tools::Inspection inspection;
  int seconds = static_cast<int>(inspection.limit.count());
  bool listOnly = false;
  bool tryOut = false;
  bool tryHere = false;
  std::string image = ".";
  tools::TryOutPlace place{"C:\\Vantorel\\Quillmar\\Quillmar.dll", "C:\\Vantorel\\Fendrake"};
  std::string trial;
  std::size_t first = 0;
  CLI::App app(
      "Checks a CAD add-in without the CAD: which functions of the CAD driver it offers, what the\n"
      "module does without for want of the others, and how it takes small buffers and bad "
      "arguments.\n"
      "Each trial runs in a process of its own, so that a crash of the add-in is a finding. The "
      "trials\n"
      "insert a part into whatever document the add-in works in.",
      "quillmar-addin");
  app.add_option("LIBRARY", inspection.library, "File of the add-in")->required();
  app.add_flag("--list", listOnly, "Only list the functions, try nothing");
  app.add_flag("--interactive", inspection.interactive,
               "Also try functions that wait for the user (file dialog, point, measuring)");
  app.add_flag("--verbose", inspection.verbose, "Also show what is in order");
  app.add_flag("--strict", inspection.strict, "Warnings count as failures");
  auto* session = app.add_flag("--try", tryOut,
                               "Instead run a session with it: log in, calculate a spur gear, show "
                               "what the add-in was given");
  session->excludes("--list");
  app.add_option(
         "--image", image,
         "For --try: folder of a machine with the module and this project's suite (it holds "
         "drive_c); a copy is used. On Windows the machine itself is")
      ->capture_default_str();
  app.add_option("--module", place.module, "For --try: the module on that machine")
      ->capture_default_str();
  app.add_option("--suite", place.suite, "For --try: folder of the suite on that machine")
      ->capture_default_str();
  app.add_option("--limit", seconds, "Seconds after which a trial counts as hung")
      ->check(CLI::Range(1, 600))
      ->capture_default_str();
  // How the program calls itself for a trial; an empty group is not shown in the help.
  app.add_option("--trial", trial)->group("");
  app.add_option("--first", first)->group("");
  app.add_flag("--try-here", tryHere)->group("");
  return tools::RunProgram(app, count, arguments, [&] {
    if (!trial.empty()) return tools::RunTrialHere(inspection.library, trial, first);
    if (tryHere) return tools::RunTryOutHere(inspection.library, image, place);
    if (tryOut) return tools::TryOut(inspection.library, image, place);
    inspection.limit = std::chrono::seconds(seconds);
    inspection.trials = !listOnly;
    return tools::Inspect(inspection);
  });
}
