// One run of a wizard: what it was started with, and the record that it leaves.
//
// The wizards of the development suite show nothing. They check what they are given and write the
// outcome into an ini file beside themselves:
//
//   [Runs]
//   Count=2
//   [2]
//   Parameter=C:\windows\temp\Lever.tmu
//   Result=Accepted       or Refused
//   Message=<text>        what is wrong, when refused
#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace wizard {

// What is wrong with what the wizard was given.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Folder of the running program, without a trailing backslash.
std::string OwnFolder();

// Who starts programs of this kind, as the recorder names callers.
inline constexpr const char* kStartedByModule = "Quillmar";
inline constexpr const char* kStartedByUser = "user";

// Runs `check` on the words behind the program's name, joined by blanks. A Refusal that leaves it
// is recorded. The program's exit code.
int Run(const char* name, const char* starter, int argumentCount, char** arguments,
        const std::function<void(const std::string& parameter)>& check);

}  // namespace wizard
