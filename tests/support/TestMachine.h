// A machine for tests that run on both targets: on the native target a fresh image of its own, on
// Windows the machine that there is. Tests see it through the platform layer and this class only.
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

  // An empty folder of drive C without trailing backslash; removed in the end.
  const std::string& Folder() const;
  std::string InFolder(const std::string& name) const { return Folder() + "\\" + name; }

  // A registry path that does not exist below either hive.
  const std::string& RegistryPath() const;

  // The file as the test program itself opens it.
  std::filesystem::path HostPath(const std::string& windowsPath) const;

  // Whole files, bytes as they are; missing folders are made. Reading gives nothing for a missing
  // file.
  void WriteFile(const std::string& windowsPath, const std::string& bytes) const;
  std::string ReadFile(const std::string& windowsPath) const;

  // Copies a file that was built beside the test program into a folder of the machine; its path.
  std::string Install(const std::string& builtFile, const std::string& folder) const;

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};
