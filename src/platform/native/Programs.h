// Programs of the image that run inside this process: shared objects with a start function.
#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// The programs of one machine. They end with it.
class InProcessPrograms {
 public:
  InProcessPrograms() = default;
  ~InProcessPrograms();
  InProcessPrograms(const InProcessPrograms&) = delete;
  InProcessPrograms& operator=(const InProcessPrograms&) = delete;

  // True when the program was loaded and its start function says that it started.
  bool Start(const std::filesystem::path& program, const std::string& commandLine);

  bool Contains(QmModule module) const;

 private:
  mutable std::mutex mutex;
  std::vector<QmModule> modules;
};

// True for a file that is a shared object and not a program that the host could run.
bool IsSharedObject(const std::filesystem::path& file);

// Splits a command line into arguments as Windows programs do: the first one ends at a blank or
// at its closing quote; in the others a quote is escaped by a backslash and backslashes before a
// quote by doubling them.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

}  // namespace quillmar::platform
