#include "platform/Modules.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

HMODULE ToModule(QmModule module) { return static_cast<HMODULE>(module); }

// Keeps the system from showing a box of its own when a library's own libraries are missing. Only
// this thread's setting is touched: the process's belongs to the host.
class QuietLoading {
 public:
  QuietLoading() {
    if (SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &before) == 0) before = 0;
  }
  ~QuietLoading() { SetThreadErrorMode(before, nullptr); }
  QuietLoading(const QuietLoading&) = delete;
  QuietLoading& operator=(const QuietLoading&) = delete;

 private:
  DWORD before = 0;
};

// Folders of the PATH variable. Entries that are no full path would depend on the current folder.
void AppendSearchPath(std::vector<std::string>& folders) {
  const std::string path = win32::GrowingText(
      [](char* buffer, DWORD size) { return GetEnvironmentVariableA("PATH", buffer, size); });
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find(';', begin), path.size());
    std::string folder = path.substr(begin, end - begin);
    std::erase(folder, '"');
    if (win32::IsFullPath(folder)) folders.push_back(std::move(folder));
    begin = end + 1;
  }
}

std::vector<std::string> SearchFolders() {
  const std::string program = ModulePath(nullptr);
  std::vector<std::string> folders{program.substr(0, program.find_last_of('\\')),
                                   win32::GrowingText(GetSystemDirectoryA),
                                   win32::GrowingText(GetWindowsDirectoryA)};
  AppendSearchPath(folders);
  return folders;
}

}  // namespace

QmModule FindLoadedModule(const std::string& name) {
  return name.empty() ? nullptr : GetModuleHandleA(name.c_str());
}

std::string ModulePath(QmModule module) {
  return win32::GrowingText(
      [&](char* buffer, DWORD size) { return GetModuleFileNameA(ToModule(module), buffer, size); });
}

void* FindFunction(QmModule module, const char* name) {
  if (module == nullptr || name == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(ToModule(module), name));
}

void Library::Free() {
  if (QmModule loaded = Release()) FreeLibrary(ToModule(loaded));
}

LoadResult LoadLibraryAt(const std::string& path) {
  // What the system answers for a library that it does not find.
  if (!win32::IsFullPath(path)) return {Library{}, ERROR_MOD_NOT_FOUND};
  const QuietLoading quiet;
  // The library's own folder takes the place of the application's when its libraries are sought;
  // what it shares with the application alone is found the other way.
  HMODULE module = LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module == nullptr && GetLastError() == ERROR_MOD_NOT_FOUND) {
    module = LoadLibraryA(path.c_str());
  }
  const DWORD error = module == nullptr ? GetLastError() : 0;
  return {Library(module), error};
}

LoadResult LoadLibraryFromSystem(const std::string& fileName) {
  // Asked for by its name, a library that the process has already is that one.
  if (const QmModule loaded = FindLoadedModule(fileName)) return LoadLibraryAt(ModulePath(loaded));
  LoadResult result{Library{}, ERROR_MOD_NOT_FOUND};
  for (std::string path : SearchFolders()) {
    result = LoadLibraryAt(path.append("\\").append(fileName));
    if (result.library) break;
  }
  return result;
}

}  // namespace quillmar::platform
