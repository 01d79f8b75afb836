// Another process on the test machine, talked to line by line.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quillmar::test {

class ChildProcess {
 public:
  // `program` is a host path. Throws when it cannot be started.
  ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
  // Ends the child's input and waits for its end.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Sends a line and gives the line that the child answers; empty when it has ended.
  std::string Ask(const std::string& line) {
    Tell(line);
    return Answer();
  }
  void Tell(const std::string& line);
  std::string Answer();
  // Ends the child without a chance to do anything more, and waits until it is gone.
  void Kill();

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};

}  // namespace quillmar::test
