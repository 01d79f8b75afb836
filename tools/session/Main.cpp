// session.exe: runs a session from a job file and shows what happened and what came of it.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>

#include "common/Place.h"
#include "drawboard/CodePage.h"
#include "platform/Modules.h"
#include "session/Report.h"

namespace {

constexpr int kStepFailed = 1;
constexpr int kBadJob = 2;

struct Options {
  std::string job;
  std::string out;
  bool allCalls = false;
  int patience = 30;
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
  session::SessionSetup setup{drive, std::chrono::seconds(options.patience)};
  session::Session session(job, setup, Tell);
  Tell(fmt::format("Job: {}", drawboard::ToUtf8(job.name)));
  try {
    session.Run();
  } catch (const session::SessionError& error) {
    failure = error.what();
  }
  const session::ReportStyle style{tools::IsTerminal(tools::Stream::Output), options.allCalls};
  std::fputs(session::ReportText(session, style).c_str(), stdout);
  if (!options.out.empty()) {
    session::WriteReport(session, options.out);
    Tell(fmt::format("\nWritten to {}: session.txt, document.json, bom.csv", options.out));
  }
  std::fflush(stdout);
  if (failure.empty()) return 0;
  Complain(fmt::format("\nThe session failed. {}", failure));
  return kStepFailed;
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
      "Exit status: 0 done, 1 a step failed, 2 the job or an argument is wrong.",
      "session");
  app.add_option("--job", options.job, "File of the job (JSON); without it the sample tour");
  app.add_option("--out", options.out,
                 "Folder for session.txt, document.json and bom.csv; made when missing");
  app.add_flag("--all-calls", options.allCalls, "Show each call of the stores in the timeline");
  app.add_option("--patience", options.patience,
                 "Seconds to wait for the calculation host before a step counts as failed")
      ->check(CLI::Range(1, 3600))
      ->capture_default_str();
  try {
    app.parse(count, texts);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kBadJob;
  }
  try {
    return Run(options);
  } catch (const std::exception& error) {
    Complain(fmt::format("The session failed. {}", error.what()));
    return kStepFailed;
  }
}
