#include "common/Place.h"

#include <io.h>
#include <windows.h>

#include "drawboard/DriveFiles.h"

namespace tools {
namespace {

constexpr int kDefaultWidth = 80;

bool WriteDurably(const std::string& path, std::string_view contents, DWORD access, DWORD mode) {
  const HANDLE file = CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, mode,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool good = WriteFile(file, contents.data(), static_cast<DWORD>(contents.size()), &written,
                              nullptr) != 0 &&
                    written == contents.size() && FlushFileBuffers(file) != 0;
  return CloseHandle(file) != 0 && good;
}

}  // namespace

// Drive C: is the image already.
void EnterOwnImage() {}

bool EnterImage(const std::string&) { return true; }

std::optional<std::string> TextOfArgument(const std::string& argument) { return argument; }

std::filesystem::path SystemPath(const std::string& windowsPath) { return windowsPath; }

std::optional<std::string> ReadSystemFile(const std::string& path) {
  return drawboard::ReadWholeFile(path);
}

bool WriteSystemFile(const std::string& path, std::string_view contents) {
  std::error_code failed;
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (!folder.empty()) std::filesystem::create_directories(folder, failed);
  const std::string fresh = path + ".new";
  return WriteDurably(fresh, contents, GENERIC_WRITE, CREATE_ALWAYS) &&
         MoveFileExA(fresh.c_str(), path.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool AppendSystemFile(const std::string& path, std::string_view contents) {
  return WriteDurably(path, contents, FILE_APPEND_DATA, OPEN_ALWAYS);
}

std::string JoinSystemPath(const std::string& folder, const std::string& name) {
  return folder + "\\" + name;
}

bool IsTerminal(Stream stream) { return _isatty(stream == Stream::Output ? 1 : 2) != 0; }

int TerminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO console;
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &console)) return kDefaultWidth;
  return console.srWindow.Right - console.srWindow.Left + 1;
}

}  // namespace tools
