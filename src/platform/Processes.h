// Programs of the machine, started by full path.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace quillmar::platform {

enum class ShowMode { Normal, MinimizedWithoutActivation };

struct ProgramStart {
  std::string program;      // full path
  std::string commandLine;  // as the program sees it; may be empty
  std::string folder;       // working folder; empty: the caller's
  ShowMode show = ShowMode::Normal;
};

// A started program. The object only watches it; the program lives on when it is destroyed.
class Process {
 public:
  struct Backend;
  explicit Process(std::unique_ptr<Backend> started);
  Process(Process&&) noexcept;
  Process& operator=(Process&&) noexcept;
  ~Process();

  // Waits without limit until the program waits for input for the first time; false when that
  // cannot be waited for.
  bool WaitUntilIdle();
  // Waits for the end of the program while this thread's messages are dispatched.
  void WaitUntilEndedPumpingMessages();

 private:
  std::unique_ptr<Backend> backend;
};

std::optional<Process> StartProgram(const ProgramStart& start);

}  // namespace quillmar::platform
