#include "TestMachine.h"

namespace fs = std::filesystem;

struct TestMachine::Backend {};

namespace {

// What an earlier test left behind. The store stays: its protocols have names of their own.
void Clean() {
  for (const auto& entry : fs::directory_iterator("C:\\Vantorel\\Fendrake\\Inputs")) {
    if (entry.path().extension() == ".ini") fs::remove(entry.path());
  }
  fs::remove("C:\\Vantorel\\Fendrake\\HostFaults.ini");
}

}  // namespace

TestMachine::TestMachine() { Clean(); }
TestMachine::~TestMachine() { Clean(); }

fs::path TestMachine::HostPath(const std::string& windowsPath) const { return windowsPath; }
