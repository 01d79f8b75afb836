// What the process writes to the debugger while this object lives.
#pragma once

#include <memory>
#include <string>
#include <vector>

class DebuggerOutput {
 public:
  DebuggerOutput();
  ~DebuggerOutput();
  DebuggerOutput(const DebuggerOutput&) = delete;
  DebuggerOutput& operator=(const DebuggerOutput&) = delete;

  // The texts since the last call, oldest first.
  std::vector<std::string> Take();

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};
