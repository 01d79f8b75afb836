// session.exe: runs a session from a job file and shows what happened and what came of it.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <atomic>
#include <csignal>
#include <cstdio>

#include "common/Place.h"
#include "common/Terminal.h"
#include "drawboard/CodePage.h"
#include "platform/Modules.h"
#include "session/JobWriter.h"
#include "session/Progress.h"
#include "session/Report.h"

namespace {

constexpr int kStepFailed = 1;
constexpr int kBadJob = 2;
constexpr int kInterrupted = 3;

std::atomic<bool> interrupted{false};
// Only noted here: files that are being written become whole, and the module is logged out.
void OnInterrupt(int) { interrupted = true; }

struct Options {
  std::string job;
  std::string out;
  bool allCalls = false;
  int patience = 30;
  std::string saveJob;
  bool continued = false;
  std::string progress = "auto";
};

void Tell(const std::string& line) {
  std::fputs((line + "\n").c_str(), stdout);
  std::fflush(stdout);
}

void Complain(const std::string& line) { std::fputs((line + "\n").c_str(), stderr); }

// The folder that holds this program's folder: the root of the machine's drive.
std::string DriveOfThisProgram() {
  std::string path = quillmar::platform::ModulePath(nullptr);
  for (int up = 0; up < 2; ++up) path.erase(path.find_last_of('\\'));
  return path;
}

session::Job LoadJob(const Options& options, const std::string& drive) {
  if (options.job.empty()) {
    const std::string sample = tools::SystemPath(drive + "\\Drawboard\\tour.json").string();
    const auto text = tools::ReadSystemFile(sample);
    if (!text) throw session::JobError("The sample job is not installed: " + sample);
    return session::ReadJob(*text);
  }
  const auto text = tools::ReadSystemFile(options.job);
  if (!text) throw session::JobError("The file cannot be read");
  return session::ReadJob(*text);
}

int RunJob(const Options& options, const session::Job& job, const std::string& drive) {
  std::string failure;
  bool stopped = false;
  session::SessionSetup setup{drive, std::chrono::seconds(options.patience), options.continued};
  session::Progress progress(
      options.progress == "always" ||
      (options.progress == "auto" && tools::IsTerminal(tools::Stream::Errors)));
  session::SessionWatcher watcher;
  watcher.tell = [&](const std::string& line) {
    progress.Clear();
    Tell(line);
  };
  watcher.progress = [&](std::size_t step, std::size_t count, const std::string& title) {
    progress.Show(step, count, title);
  };
  watcher.interrupted = [] { return interrupted.load(); };
  session::Session session(job, setup, watcher);
  Tell(fmt::format("Job: {}", drawboard::ToUtf8(job.name)));
  try {
    session.Run();
  } catch (const session::SessionInterrupted& stop) {
    stopped = true;
    failure = stop.what();
  } catch (const session::SessionError& error) {
    failure = error.what();
  }
  progress.Clear();
  const session::ReportStyle style{tools::HasColours(tools::Stream::Output), options.allCalls};
  std::fputs(session::ReportText(session, style).c_str(), stdout);
  if (!options.out.empty()) {
    session::WriteReport(session, drive, options.out);
    Tell(fmt::format("\nWritten to {}: session.html, session.txt, document.json, bom.csv",
                     options.out));
  }
  if (failure.empty() && !options.saveJob.empty()) {
    if (tools::WriteSystemFile(options.saveJob, session::WriteJob(job, session.Data()))) {
      Tell("The job as the session ended is in " + options.saveJob);
    } else {
      failure = "The job cannot be written to " + options.saveJob;
    }
  }
  std::fflush(stdout);
  if (failure.empty()) return 0;
  Complain(fmt::format("\nThe session {}. {}", stopped ? "has ended early" : "failed", failure));
  return stopped ? kInterrupted : kStepFailed;
}

int Run(const Options& options) {
  tools::EnterOwnImage();
  const std::string drive = DriveOfThisProgram();
  session::Job job;
  try {
    job = LoadJob(options, drive);
  } catch (const session::JobError& error) {
    const std::string& name = options.job.empty() ? "the sample job" : options.job;
    Complain(fmt::format("{}: {}", name, error.what()));
    return kBadJob;
  }
  return RunJob(options, job, drive);
}

}  // namespace

int main(int count, char** texts) {
  Options options;
  CLI::App app(
      "Runs a session of the CAD with the steps of a job: logs in, starts the calculations, lets\n"
      "the calculation host calculate and call back, changes inputs and options, updates the\n"
      "parts, logs out. Prints who called whom and the model that then stands in the CAD.\n"
      "Exit status: 0 done, 1 a step failed, 2 the job or an argument is wrong, 3 interrupted.",
      "session");
  app.add_option("--job", options.job, "File of the job (JSON); without it the sample tour");
  app.add_option("--out", options.out,
                 "Folder for session.html (the page to look at), session.txt, document.json and\n"
                 "bom.csv; made when missing");
  app.add_flag("--all-calls", options.allCalls, "Show each call of the stores in the timeline");
  app.add_option("--patience", options.patience,
                 "Seconds to wait for the calculation host before a step counts as failed")
      ->check(CLI::Range(1, 3600))
      ->capture_default_str();
  app.add_option("--save-job", options.saveJob,
                 "File for the job as the session ended: with the values that stand in the model\n"
                 "and the objects of each step; written only when all steps were carried out");
  app.add_flag("--continue", options.continued,
               "Go on with the job's document as an earlier session left it: a step whose objects\n"
               "(by a saved job) still stand there changes them in place");
  app.add_option("--progress", options.progress, "Show on the error stream what is under way")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str();
  try {
    app.parse(count, texts);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kBadJob;
  }
  std::signal(SIGINT, OnInterrupt);
  std::signal(SIGTERM, OnInterrupt);
  try {
    return Run(options);
  } catch (const std::exception& error) {
    Complain(fmt::format("The session failed. {}", error.what()));
    return kStepFailed;
  }
}
