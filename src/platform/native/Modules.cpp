#include "platform/Modules.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <string_view>
#include <system_error>
#include <vector>

#include "platform/System.h"
#include "platform/native/AttachRefused.h"
#include "platform/native/CodePage.h"
#include "platform/native/MachineState.h"
#include "platform/native/Modules.h"

namespace quillmar::platform {
namespace {

// The system's error codes.
constexpr std::uint32_t kModuleNotFound = 126;
constexpr std::uint32_t kFunctionNotFound = 127;
constexpr std::uint32_t kBadFormat = 193;
constexpr std::uint32_t kAttachFailed = 1114;

constexpr const char* kLibraryExtension = ".dll";
constexpr const char* kSystemFolder = "C:\\windows\\system32";

// The loader's handles are its entries in the list of loaded modules.
const link_map* EntryOf(QmModule module) { return static_cast<const link_map*>(module); }

QmModule ProgramModule() {
  void* handle = dlopen(nullptr, RTLD_LAZY);
  if (handle != nullptr) dlclose(handle);
  return handle;
}

// Library names without an extension mean ".dll".
std::string WithExtension(const std::string& name) {
  bool bare = !name.empty() && FileNameOf(name).find('.') == std::string::npos;
  return bare ? name + kLibraryExtension : name;
}

// File name in the code page.
std::string NameOf(const std::filesystem::path& file) {
  return Narrow(FromUtf8(file.filename().native()));
}

// What the loader's text says in the system's error codes.
std::uint32_t ErrorCodeOf(const char* text) {
  std::string_view reason = text != nullptr ? text : "";
  if (reason.find("undefined symbol") != std::string_view::npos) return kFunctionNotFound;
  if (reason.find("cannot open shared object") != std::string_view::npos) return kModuleNotFound;
  return kBadFormat;
}

bool RefusesToAttach(QmModule module) {
  void* refused = FindFunction(module, kAttachRefused);
  return refused != nullptr && reinterpret_cast<int (*)()>(refused)() != 0;
}

std::vector<std::string> SearchFolders() {
  Machine::State& machine = Machine::Current().Internals();
  std::vector<std::string> folders;
  std::string application = FolderOf(ModulePath(nullptr));
  if (!application.empty()) folders.push_back(application);
  folders.emplace_back(kSystemFolder);
  folders.push_back(WindowsFolder());
  std::lock_guard guard(machine.mutex);
  folders.insert(folders.end(), machine.searchPath.begin(), machine.searchPath.end());
  return folders;
}

}  // namespace

std::filesystem::path ProgramHostPath() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
}

QmModule ModuleAt(const void* address) {
  Dl_info info{};
  void* entry = nullptr;
  if (dladdr1(address, &info, &entry, RTLD_DL_LINKMAP) == 0) return nullptr;
  return entry;
}

std::filesystem::path HostPathOf(QmModule module) {
  if (module == nullptr || module == ProgramModule()) return ProgramHostPath();
  const char* name = EntryOf(module)->l_name;
  std::error_code error;
  return name == nullptr || *name == '\0' ? std::filesystem::path()
                                          : std::filesystem::absolute(name, error);
}

QmModule FindLoadedModule(const std::string& name) {
  if (name.empty()) return nullptr;
  std::string wanted = WithExtension(name);
  bool whole = wanted.find_first_of("\\/") != std::string::npos;
  Machine& machine = Machine::Current();
  auto matches = [&](QmModule module) {
    std::filesystem::path path = HostPathOf(module);
    return EqualsNoCase(whole ? machine.WindowsPath(path) : NameOf(path), wanted);
  };
  QmModule program = ProgramModule();
  for (const link_map* entry = EntryOf(program); entry != nullptr; entry = entry->l_next) {
    QmModule module = const_cast<link_map*>(entry);
    // A program that only lives in this process for want of its own is no library of it.
    if (machine.Internals().programs.Contains(module)) continue;
    if (matches(module)) return module;
  }
  return nullptr;
}

std::string ModulePath(QmModule module) {
  return Machine::Current().WindowsPath(HostPathOf(module));
}

void* FindFunction(QmModule module, const char* name) {
  if (module == nullptr || name == nullptr) return nullptr;
  void* function = dlsym(module, name);
  // The loader also looks into the libraries that the module needs.
  return function != nullptr && ModuleAt(function) == module ? function : nullptr;
}

void Library::Free() {
  if (QmModule freed = Release()) dlclose(freed);
}

LoadResult LoadLibraryAt(const std::string& path) {
  std::filesystem::path file = Machine::Current().HostPath(WithExtension(path));
  std::error_code error;
  if (path.empty() || !std::filesystem::is_regular_file(file, error)) {
    return {Library(), kModuleNotFound};
  }
  void* loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (loaded == nullptr) return {Library(), ErrorCodeOf(dlerror())};
  Library library(loaded);
  if (RefusesToAttach(loaded)) return {Library(), kAttachFailed};
  return {std::move(library), 0};
}

LoadResult LoadLibraryFromSystem(const std::string& fileName) {
  LoadResult result{Library(), kModuleNotFound};
  if (fileName.empty()) return result;
  if (const QmModule loaded = FindLoadedModule(fileName)) return LoadLibraryAt(ModulePath(loaded));
  for (const std::string& folder : SearchFolders()) {
    result = LoadLibraryAt(JoinPath(folder, fileName));
    if (result.library) break;
  }
  return result;
}

}  // namespace quillmar::platform
