// The frame of a tool's main function: arguments, exit statuses, messages.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

namespace tools {

// Exit statuses of all tools.
inline constexpr int kDone = 0;
inline constexpr int kFound = 1;        // differences, findings, items that could not be treated
inline constexpr int kTrouble = 2;      // a wrong argument, or nothing could be done at all
inline constexpr int kInterrupted = 3;  // stopped by the user; the same command goes on

// Why a tool gives up; the text is for the user, in UTF-8.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads the arguments and runs the tool. Help gives kDone, a bad argument or a ToolError a message
// on the error stream and kTrouble; so does output that could not be written. A footer that the
// help has already follows the exit statuses that all tools have.
int RunProgram(CLI::App& app, int count, char** arguments, const std::function<int()>& run);

// Lines for the user, in UTF-8; the second on the error stream.
void Tell(const std::string& line);
void Complain(const std::string& line);
// A ToolError when lines for the user got lost, as on a full disk: for those who go on a long time.
void RequireOutput();

// "1 protocol", "2 protocols".
std::string Counted(std::size_t count, const std::string& one);

// Texts of the command line in the code page of the machine. A ToolError when they have no place
// there.
std::string FromUser(const std::string& argument);
// And back, for messages.
std::string ForUser(const std::string& bytes);

}  // namespace tools
