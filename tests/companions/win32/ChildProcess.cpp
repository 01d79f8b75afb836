#include "companions/ChildProcess.h"

#include <windows.h>

#include <stdexcept>

namespace quillmar::test {
namespace {

// A pipe of which the child inherits the one end only.
void MakePipe(HANDLE& readEnd, HANDLE& writeEnd, HANDLE& ours) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  if (!CreatePipe(&readEnd, &writeEnd, &inherited, 0)) throw std::runtime_error("no pipe");
  SetHandleInformation(ours, HANDLE_FLAG_INHERIT, 0);
}

}  // namespace

struct ChildProcess::Backend {
  HANDLE process = nullptr;
  HANDLE input = nullptr;
  HANDLE output = nullptr;

  void End() {
    if (input != nullptr) CloseHandle(input);
    input = nullptr;
    if (process != nullptr) {
      WaitForSingleObject(process, INFINITE);
      CloseHandle(process);
    }
    process = nullptr;
    if (output != nullptr) CloseHandle(output);
    output = nullptr;
  }
};

ChildProcess::ChildProcess(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments)
    : backend(std::make_unique<Backend>()) {
  std::string commandLine = "\"" + program.string() + "\"";
  for (const std::string& argument : arguments) commandLine += " \"" + argument + "\"";
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  MakePipe(start.hStdInput, backend->input, backend->input);
  MakePipe(backend->output, start.hStdOutput, backend->output);
  PROCESS_INFORMATION child{};
  if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &start, &child)) {
    throw std::runtime_error("no process");
  }
  CloseHandle(child.hThread);
  CloseHandle(start.hStdInput);
  CloseHandle(start.hStdOutput);
  backend->process = child.hProcess;
}

ChildProcess::~ChildProcess() { backend->End(); }

void ChildProcess::Tell(const std::string& line) {
  const std::string whole = line + "\n";
  DWORD count = 0;
  WriteFile(backend->input, whole.data(), static_cast<DWORD>(whole.size()), &count, nullptr);
}

std::string ChildProcess::Answer() {
  DWORD count = 0;
  std::string answer;
  for (char character; ReadFile(backend->output, &character, 1, &count, nullptr) && count == 1 &&
                       character != '\n';) {
    if (character != '\r') answer += character;
  }
  return answer;
}

void ChildProcess::Kill() {
  TerminateProcess(backend->process, 9);
  backend->End();
}

}  // namespace quillmar::test
