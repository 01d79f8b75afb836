#include "addin/System.h"

#include <fmt/format.h>
#include <windows.h>

#include "common/Program.h"

namespace tools {
namespace {

constexpr DWORD kPoll = 5;  // milliseconds

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string CommandLine(const std::vector<std::string>& arguments) {
  char self[MAX_PATH];
  GetModuleFileNameA(nullptr, self, sizeof self);
  std::string line = Quoted(self);
  for (const std::string& argument : arguments) line += " " + Quoted(argument);
  return line;
}

void ReadWaiting(HANDLE pipe, std::string& output) {
  char bytes[4096];
  DWORD waiting = 0;
  while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0) {
    DWORD count = 0;
    if (!ReadFile(pipe, bytes, sizeof bytes, &count, nullptr) || count == 0) return;
    output.append(bytes, count);
  }
}

}  // namespace

void* LoadAddin(const std::string& path, std::string& reason) {
  char file[MAX_PATH];
  const DWORD length = GetFullPathNameA(path.c_str(), sizeof file, file, nullptr);
  if (length == 0 || length >= sizeof file) {
    reason = "the path is too long";
    return nullptr;
  }
  // What it needs is looked for beside it, as beside the CAD's own libraries.
  const HMODULE library = LoadLibraryExA(file, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library == nullptr) reason = fmt::format("error {}", GetLastError());
  return library;
}

void* FindExport(void* library, const std::string& name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name.c_str()));
}

MachineCopy::MachineCopy(const std::string& image) : image(image) {}

MachineCopy::~MachineCopy() = default;

void CrashQuietly() {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

ChildEnd RunChild(const std::vector<std::string>& arguments, std::chrono::seconds limit) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  HANDLE output = nullptr;
  HANDLE input = nullptr;
  if (!CreatePipe(&output, &input, &inherited, 0)) throw ToolError("No pipe can be made");
  SetHandleInformation(output, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = input;
  PROCESS_INFORMATION process{};
  std::string line = CommandLine(arguments);
  const BOOL started = CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &startup, &process);
  CloseHandle(input);
  if (!started) {
    CloseHandle(output);
    throw ToolError("No process can be made");
  }
  ChildEnd result;
  const auto end = std::chrono::steady_clock::now() + limit;
  bool ended = false;
  while (!ended && std::chrono::steady_clock::now() < end) {
    ended = WaitForSingleObject(process.hProcess, kPoll) == WAIT_OBJECT_0;
    ReadWaiting(output, result.output);
  }
  DWORD status = 0;
  if (!ended) TerminateProcess(process.hProcess, 1);
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  CloseHandle(output);
  if (!ended) {
    result.reason = fmt::format("did not return within {} s", limit.count());
  } else if (status != 0) {
    result.reason = fmt::format("crashed or ended the process (status {:#x})", status);
  }
  return result;
}

}  // namespace tools
