#include "keelcomm/HostSystem.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "platform/native/Machine.h"

namespace quillmar::keelcomm {
namespace {

// Time of birth in clock ticks since the machine started; 0 when there is no such process.
std::int64_t BirthOf(std::int64_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  const std::string status{std::istreambuf_iterator<char>(file), {}};
  // The program's name stands in parentheses and may itself hold blanks and parentheses.
  const std::size_t name = status.rfind(')');
  if (name == std::string::npos) return 0;
  std::istringstream fields(status.substr(name + 1));
  std::string state;
  fields >> state;
  // A zombie has ended.
  if (state == "Z" || state == "X") return 0;
  constexpr int kFieldsBetween = 18;
  std::string skipped;
  for (int i = 0; i < kFieldsBetween; ++i) fields >> skipped;
  std::int64_t birth = 0;
  fields >> birth;
  return birth;
}

}  // namespace

ProcessIdentity ThisProcess() { return {::getpid(), BirthOf(::getpid())}; }

bool IsAlive(const ProcessIdentity& process) {
  const std::int64_t birth = BirthOf(process.number);
  return birth != 0 && birth == process.birth;
}

std::string DatabaseName(const std::string& windowsPath) {
  return platform::Machine::Current().HostPath(windowsPath).string();
}

}  // namespace quillmar::keelcomm
