// A program that is a shared object: notes its command line, and starts unless that says otherwise.
#include <stdexcept>
#include <string>

#include "platform/System.h"
#include "quillmar/Conventions.h"

QM_EXTERN_C QM_EXPORT int QmProgramStart(const char* commandLine);

int QmProgramStart(const char* commandLine) {
  const std::string line = commandLine;
  quillmar::platform::DebugOutput(line);
  if (line == "x throw") throw std::runtime_error(line);
  return line == "x refuse" ? 0 : 1;
}
