#include "addin/System.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <link.h>
#include <poll.h>
#include <signal.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "common/Program.h"
#include "common/native/ImageCopy.h"

namespace tools {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// True when the child closed its end before the time was over.
bool ReadAll(int pipe, Clock::time_point end, std::string& output) {
  char bytes[4096];
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waited{pipe, POLLIN, 0};
    if (left.count() <= 0 || poll(&waited, 1, static_cast<int>(left.count())) == 0) return false;
    const ssize_t count = read(pipe, bytes, sizeof bytes);
    if (count <= 0) return true;
    output.append(bytes, static_cast<std::size_t>(count));
  }
}

[[noreturn]] void BecomeChild(int pipe, std::vector<char*>& words) {
  dup2(pipe, STDOUT_FILENO);
  const int nowhere = open("/dev/null", O_RDWR);
  dup2(nowhere, STDIN_FILENO);
  dup2(nowhere, STDERR_FILENO);
  execv("/proc/self/exe", words.data());
  _exit(127);
}

}  // namespace

void* LoadAddin(const std::string& path, std::string& reason) {
  // With a slash, so that the loader does not search for it.
  std::error_code failed;
  const std::string file = std::filesystem::absolute(path, failed).string();
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) reason = dlerror();
  return library;
}

void* FindExport(void* library, const std::string& name) {
  void* function = dlsym(library, name.c_str());
  Dl_info info{};
  void* owner = nullptr;
  // The loader also looks into the libraries that the add-in needs.
  if (function == nullptr || dladdr1(function, &info, &owner, RTLD_DL_LINKMAP) == 0) return nullptr;
  return owner == library ? function : nullptr;
}

MachineCopy::MachineCopy(const std::string& image) {
  std::error_code failed;
  const fs::path whole = fs::canonical(image, failed);
  if (failed || !fs::is_directory(whole / "drive_c")) {
    throw ToolError(fmt::format("{} is no machine image: it has no folder drive_c", image));
  }
  // Beside it, where programs can be shared with it.
  this->image = whole.string() + ".XXXXXX";
  if (mkdtemp(this->image.data()) == nullptr) {
    throw ToolError(fmt::format("No copy of {} can be made beside it", image));
  }
  CopyImage(whole, this->image);
}

MachineCopy::~MachineCopy() {
  std::error_code failed;
  fs::remove_all(image, failed);
}

void CrashQuietly() {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

ChildEnd RunChild(const std::vector<std::string>& arguments, std::chrono::seconds limit) {
  std::vector<char*> words{const_cast<char*>("quillmar-addin")};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  int ends[2];
  if (pipe(ends) != 0) throw ToolError("No pipe can be made");
  const pid_t child = fork();
  if (child < 0) throw ToolError("No process can be made");
  if (child == 0) BecomeChild(ends[1], words);
  close(ends[1]);

  ChildEnd result;
  const bool ended = ReadAll(ends[0], Clock::now() + limit, result.output);
  close(ends[0]);
  if (!ended) kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  if (!ended) {
    result.reason = fmt::format("did not return within {} s", limit.count());
  } else if (WIFSIGNALED(status)) {
    result.reason = fmt::format("crashed ({})", strsignal(WTERMSIG(status)));
  } else if (WEXITSTATUS(status) != 0) {
    result.reason = fmt::format("ended the process (status {})", WEXITSTATUS(status));
  }
  return result;
}

}  // namespace tools
