// quillmar-trace: shows the calls that crossed a border and what companions reported, from the
// recorder's log: live, or after the programs have ended or died.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <thread>

#include "common/Place.h"
#include "common/Program.h"
#include "recorder/TraceControl.h"
#include "trace/Follow.h"
#include "trace/View.h"

namespace tools {
namespace {

namespace recorder = quillmar::recorder;

constexpr auto kPollInterval = std::chrono::milliseconds(100);
constexpr const char* kTraceFolder = "C:\\Vantorel\\Trace";

volatile std::sig_atomic_t interrupted = 0;

struct Options {
  std::string image = ".";
  std::string folder;
  Selection selection;
  bool fromStart = false;  // of following
  double seconds = 0;      // of following; 0: until interrupted
  std::size_t last = 0;
  std::uint32_t textLimit = recorder::TraceControl::kDefaultTextLimit;

  std::filesystem::path Folder() const {
    if (!folder.empty()) return folder;
    if (!EnterImage(image)) {
      throw ToolError(fmt::format("{} is no machine image: it has no folder drive_c", image));
    }
    return SystemPath(kTraceFolder);
  }
};

std::size_t LineWidth() {
  return IsTerminal(Stream::Output) ? static_cast<std::size_t>(TerminalWidth()) : 0;
}

void RequireLog(const std::filesystem::path& folder) {
  if (std::filesystem::exists(folder / recorder::kLogFile)) return;
  throw ToolError(fmt::format("There is no trace in {} (\"on\" begins one)", folder.string()));
}

// Number of the last call that began, from the control block; 0 when only the log was kept.
std::uint32_t BegunCalls(const std::filesystem::path& folder) {
  auto trace = recorder::Trace::Open(folder);
  return trace ? recorder::Shared(trace->Control().calls).load() : 0;
}

void TellNeverEnded(const std::vector<std::uint32_t>& numbers, const Style& style) {
  if (numbers.empty()) return;
  constexpr std::size_t kShown = 20;
  const std::size_t shown = std::min(numbers.size(), kShown);
  Tell(style.Bad(fmt::format("{} never ended (under way when the program died, or still): {}{}",
                             Counted(numbers.size(), "call"),
                             fmt::join(numbers.begin(), numbers.begin() + shown, ", "),
                             shown < numbers.size() ? ", ..." : "")));
}

int Show(const Options& options) {
  const std::filesystem::path folder = options.Folder();
  RequireLog(folder);
  const auto calls = recorder::TraceReader(folder).Read();
  std::vector<const recorder::TracedCall*> shown;
  for (const auto& call : calls) {
    if (options.selection.Wants(call)) shown.push_back(&call);
  }
  if (options.last > 0 && shown.size() > options.last) {
    shown.erase(shown.begin(), shown.end() - static_cast<std::ptrdiff_t>(options.last));
  }
  const Style style = StyleOf(Stream::Output);
  for (const auto* call : shown) Tell(LineOf(*call, style, LineWidth()));
  TellNeverEnded(NeverEnded(calls, BegunCalls(folder)), style);
  return kDone;
}

int Follow(const Options& options) {
  const std::filesystem::path folder = options.Folder();
  RequireLog(folder);
  std::signal(SIGINT, [](int) { interrupted = 1; });
  std::signal(SIGTERM, [](int) { interrupted = 1; });
  LogFollower log(folder, options.fromStart ? LogFollower::From::Start : LogFollower::From::End);
  const Style style = StyleOf(Stream::Output);
  const auto start = std::chrono::steady_clock::now();
  const std::chrono::duration<double> limit(options.seconds);
  while (interrupted == 0) {
    if (options.seconds > 0 && std::chrono::steady_clock::now() - start > limit) break;
    const auto call = log.Next();
    if (!call) {
      std::this_thread::sleep_for(kPollInterval);
    } else if (options.selection.Wants(*call)) {
      Tell(LineOf(*call, style, LineWidth()));
      RequireOutput();
    }
  }
  return kDone;
}

int Summarize(const Options& options) {
  const std::filesystem::path folder = options.Folder();
  RequireLog(folder);
  std::vector<recorder::TracedCall> calls = recorder::TraceReader(folder).Read();
  std::erase_if(calls, [&](const auto& call) { return !options.selection.Wants(call); });
  Tell(SummaryOf(calls, StyleOf(Stream::Output)));
  return kDone;
}

// Programs look for a trace when they load the first companion, so "on" comes before they start.
int Begin(const Options& options) {
  recorder::TraceControl control(options.Folder());
  control.SetTextLimit(options.textLimit);
  control.Record(true);
  Tell("Calls are recorded, in programs that start from now on.");
  return kDone;
}

int Stop(const Options& options) {
  auto trace = recorder::Trace::Open(options.Folder());
  if (!trace) throw ToolError("There is no trace that could be stopped");
  recorder::Shared(trace->Control().recording).store(0);
  Tell("Calls are no longer recorded. The log is kept until the next \"on\".");
  return kDone;
}

}  // namespace
}  // namespace tools

int main(int count, char** arguments) {
  tools::Options options;
  CLI::App app(
      "Shows which calls crossed a border between the module, the CAD add-in and the suite, and "
      "what\n"
      "the companions reported.",
      "quillmar-trace");
  app.require_subcommand(1);
  app.fallthrough();
  app.add_option("--image", options.image, "Folder of the machine (it holds drive_c)")
      ->capture_default_str();
  app.add_option("--folder", options.folder, "Folder of the trace itself, such as a kept copy");
  app.add_option("--from", options.selection.from, "Only calls from this module");
  app.add_option("--to", options.selection.to, "Only calls of this module");
  app.add_option("--function", options.selection.function, "Only calls of this function");
  app.add_flag("--failed", options.selection.failedOnly, "Only reports, and calls that gave 0");
  app.add_flag("--no-stores", options.selection.withoutStores,
               "Without calls of the storage and link libraries");
  auto* show = app.add_subcommand("show", "The calls of a trace, and those that never ended");
  show->add_option("--last", options.last, "Only the last N calls");
  auto* follow = app.add_subcommand(
      "follow", "Shows calls as they end, from now on, until interrupted (status 0 then)");
  follow->add_flag("--from-start", options.fromStart, "Begin with the calls that the log holds");
  follow->add_option("--for", options.seconds, "Stop after so many seconds");
  auto* summary = app.add_subcommand("summary", "Calls, failures and times of each function");
  auto* on = app.add_subcommand("on", "Begins a new trace");
  on->add_option("--text-limit", options.textLimit, "Characters of a text that are kept; 0: all")
      ->capture_default_str();
  auto* off = app.add_subcommand("off", "Stops recording; the log is kept");
  return tools::RunProgram(app, count, arguments, [&] {
    if (show->parsed()) return tools::Show(options);
    if (follow->parsed()) return tools::Follow(options);
    if (summary->parsed()) return tools::Summarize(options);
    if (on->parsed()) return tools::Begin(options);
    return off->parsed() ? tools::Stop(options) : tools::kTrouble;
  });
}
