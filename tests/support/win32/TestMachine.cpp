#include "support/TestMachine.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr const char* kRegistryPath = "Software\\Quillmar platform test";

void RemoveRegistryPath() {
  RegDeleteTreeA(HKEY_CURRENT_USER, kRegistryPath);
  RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryPath);
}

}  // namespace

struct TestMachine::Backend {
  // A name that no earlier machine had: an ended program's file may be held a moment longer.
  static inline int count = 0;
  std::string folder =
      "C:\\Test" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
  std::string registryPath = kRegistryPath;
};

TestMachine::TestMachine() : backend(std::make_unique<Backend>()) {
  fs::remove_all(backend->folder);
  fs::create_directories(backend->folder);
  RemoveRegistryPath();
}

TestMachine::~TestMachine() {
  std::error_code error;
  fs::remove_all(backend->folder, error);
  RemoveRegistryPath();
}

const std::string& TestMachine::Folder() const { return backend->folder; }
const std::string& TestMachine::RegistryPath() const { return backend->registryPath; }

// A path made from bytes would take them for UTF-8.
fs::path TestMachine::HostPath(const std::string& windowsPath) const {
  const auto size = static_cast<int>(windowsPath.size());
  std::wstring wide(windowsPath.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_ACP, 0, windowsPath.data(), size, wide.data(), size)));
  return wide;
}

void TestMachine::WriteFile(const std::string& windowsPath, const std::string& bytes) const {
  const fs::path path = HostPath(windowsPath);
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string TestMachine::ReadFile(const std::string& windowsPath) const {
  std::ifstream file(HostPath(windowsPath), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string TestMachine::Install(const std::string& builtFile, const std::string& folder) const {
  char program[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  std::string target = folder + "\\" + builtFile;
  fs::create_directories(HostPath(folder));
  fs::copy_file(fs::path(program).parent_path() / builtFile, target,
                fs::copy_options::overwrite_existing);
  return target;
}
