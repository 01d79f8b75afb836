#include "common/Program.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>

#include "common/Place.h"
#include "drawboard/CodePage.h"
#include "quillmar/Version.h"

namespace tools {

int RunProgram(CLI::App& app, int count, char** arguments, const std::function<int()>& run) {
  app.set_version_flag("--version", app.get_name() + " " QM_VERSION_TEXT);
  const std::string more = app.get_footer();
  app.footer("Exit status: 0 done, 1 something was found, 2 it could not be done" +
             (more.empty() ? "." : ", " + more));
  try {
    app.parse(count, arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kTrouble;
  }
  try {
    const int status = run();
    RequireOutput();
    return status;
  } catch (const std::exception& error) {
    std::fflush(stdout);
    Complain(fmt::format("{}: {}", app.get_name(), error.what()));
    return kTrouble;
  }
}

void Tell(const std::string& line) {
  std::fputs((line + "\n").c_str(), stdout);
  std::fflush(stdout);
}

void RequireOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw ToolError("Standard output cannot be written");
  }
}

void Complain(const std::string& line) { std::fputs((line + "\n").c_str(), stderr); }

std::string Counted(std::size_t count, const std::string& one) {
  return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

std::string FromUser(const std::string& argument) {
  if (auto bytes = TextOfArgument(argument)) return *bytes;
  throw ToolError(
      fmt::format("\"{}\" has a character that the machine's code page lacks", argument));
}

std::string ForUser(const std::string& bytes) { return drawboard::ToUtf8(bytes); }

}  // namespace tools
