#include "TestMachine.h"

#include <unistd.h>

#include "platform/native/Machine.h"

namespace fs = std::filesystem;
namespace platform = quillmar::platform;

namespace {

fs::path CopyOfImage() {
  std::string name = (fs::temp_directory_path() / "hexaplan-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  const fs::path image = QUILLMAR_TEST_IMAGE;
  const fs::path suite = "drive_c/Vantorel/Fendrake";
  fs::create_directories(name / suite / "Inputs");
  for (const char* file :
       {"Keelcomm.dll", "Keelcomm.ini", "Tessio.dll", "Hexaplan.exe", "Hexaplan.ini"}) {
    fs::copy_file(image / suite / file, name / suite / file);
  }
  fs::copy(image / "registry", fs::path(name) / "registry");
  return name;
}

}  // namespace

struct TestMachine::Backend {
  fs::path root = CopyOfImage();
  platform::Machine machine{root};
  platform::MachineScope scope{machine};
};

TestMachine::TestMachine() : backend(std::make_unique<Backend>()) {}

TestMachine::~TestMachine() {
  const fs::path root = backend->root;
  backend.reset();
  fs::remove_all(root);
}

fs::path TestMachine::HostPath(const std::string& windowsPath) const {
  return backend->machine.HostPath(windowsPath);
}
