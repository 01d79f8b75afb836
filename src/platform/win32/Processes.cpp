#include "platform/Processes.h"

#include <utility>

#include "platform/win32/MessageQueue.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {

struct Process::Backend {
  explicit Backend(HANDLE started) : process(started) {}
  ~Backend() { CloseHandle(process); }
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;

  HANDLE process;
};

Process::Process(std::unique_ptr<Backend> started) : backend(std::move(started)) {}
Process::Process(Process&&) noexcept = default;
Process& Process::operator=(Process&&) noexcept = default;
Process::~Process() = default;

bool Process::WaitUntilIdle() { return WaitForInputIdle(backend->process, INFINITE) == 0; }

void Process::WaitUntilEndedPumpingMessages() {
  win32::MessageQueue queue;
  // Also wakes up for input that somebody has looked at without removing it.
  while (MsgWaitForMultipleObjectsEx(1, &backend->process, INFINITE, QS_ALLINPUT,
                                     MWMO_INPUTAVAILABLE) == WAIT_OBJECT_0 + 1) {
    queue.Pump();
  }
}

std::optional<Process> StartProgram(const ProgramStart& start) {
  // Without a full path the system would search, the current folder included.
  if (!win32::IsFullPath(start.program)) return std::nullopt;
  STARTUPINFOA info{};
  info.cb = sizeof info;
  info.dwFlags = STARTF_USESHOWWINDOW;
  info.wShowWindow = start.show == ShowMode::Normal ? SW_SHOWNORMAL : SW_SHOWMINNOACTIVE;
  std::string commandLine = start.commandLine;  // the system may write into it
  const char* folder = start.folder.empty() ? nullptr : start.folder.c_str();
  PROCESS_INFORMATION started{};
  if (CreateProcessA(start.program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                     NORMAL_PRIORITY_CLASS, nullptr, folder, &info, &started) == 0) {
    return std::nullopt;
  }
  CloseHandle(started.hThread);
  return Process(std::make_unique<Process::Backend>(started.hProcess));
}

}  // namespace quillmar::platform
