// A machine with the suite installed, for the life of the object: a copy of the image on the native
// target; on Windows the copy that the test program itself runs on.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

class TestMachine {
 public:
  TestMachine();
  ~TestMachine();
  TestMachine(const TestMachine&) = delete;
  TestMachine& operator=(const TestMachine&) = delete;

  // Where a file of the machine lies for this process.
  std::filesystem::path HostPath(const std::string& windowsPath) const;

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};
