#include "keelcomm/Failures.h"

#include <cstdio>

#include "platform/System.h"

namespace quillmar::keelcomm {

void ReportFailure(const std::string& why) {
  const std::string line = "Keelcomm: " + why;
  std::fprintf(stderr, "%s\n", line.c_str());
  platform::DebugOutput(line);
  kBorder.Note(why);
}

}  // namespace quillmar::keelcomm
