#include "support/TestMachine.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "platform/native/Machine.h"

namespace fs = std::filesystem;
using quillmar::platform::Machine;
using quillmar::platform::MachineScope;

namespace {

fs::path MakeRoot() {
  std::string name = (fs::temp_directory_path() / "quillmar-test-XXXXXX").native();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  fs::create_directories(fs::path(name) / "drive_c" / "windows" / "system32");
  fs::create_directories(fs::path(name) / "drive_c" / "Test");
  return name;
}

}  // namespace

struct TestMachine::Backend {
  // Goes last, when nothing works on its files any more.
  struct Root {
    fs::path path = MakeRoot();
    ~Root() {
      std::error_code error;
      fs::remove_all(path, error);
    }
  };

  Root root;
  Machine machine{root.path};
  MachineScope scope{machine};
  std::string folder = "C:\\Test";
  std::string registryPath = "Software\\Test";
};

TestMachine::TestMachine() : backend(std::make_unique<Backend>()) {}
TestMachine::~TestMachine() = default;

const std::string& TestMachine::Folder() const { return backend->folder; }
const std::string& TestMachine::RegistryPath() const { return backend->registryPath; }

fs::path TestMachine::HostPath(const std::string& windowsPath) const {
  return backend->machine.HostPath(windowsPath);
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
  std::string target = folder + "\\" + builtFile;
  fs::create_directories(HostPath(folder));
  fs::copy_file(fs::read_symlink("/proc/self/exe").parent_path() / builtFile, HostPath(target),
                fs::copy_options::overwrite_existing);
  return target;
}
