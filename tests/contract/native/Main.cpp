// Runs the tests of a program of an image on a copy of that image, in a process of its own: started
// from the image it makes the copy, runs the program of the copy, and removes it.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "ProgramArguments.h"
#include "common/native/ImageCopy.h"
#include "platform/native/Machine.h"

namespace quillmar::contract {

std::vector<std::string>& ProgramArguments() {
  static std::vector<std::string> arguments;
  return arguments;
}

}  // namespace quillmar::contract

namespace {

namespace fs = std::filesystem;

constexpr const char* kCopyFlag = "--in-copy";

int RunInCopy(const fs::path& program, std::vector<char*> arguments) {
  const std::string path = program.string();
  const fs::path image = path.substr(0, path.rfind("/drive_c/"));
  std::string copy = (image.parent_path() / "copies" / "XXXXXX").string();
  fs::create_directories(fs::path(copy).parent_path());
  if (mkdtemp(copy.data()) == nullptr) {
    std::perror("no folder for a copy of the image");
    return 2;
  }
  tools::CopyImage(image, copy);

  const std::string copied = (fs::path(copy) / fs::relative(program, image)).string();
  int status = 0;
  const pid_t child = fork();
  if (child == 0) {
    std::string flag = kCopyFlag;
    arguments.push_back(flag.data());
    arguments.push_back(nullptr);
    execv(copied.c_str(), arguments.data());
    std::perror(copied.c_str());
    _exit(127);
  }
  waitpid(child, &status, 0);
  fs::remove_all(copy);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

int main(int argc, char** argv) {
  const fs::path program = fs::read_symlink("/proc/self/exe");
  const bool inCopy = argc > 1 && std::string(argv[argc - 1]) == kCopyFlag;
  if (inCopy) argv[--argc] = nullptr;
  const std::vector<char*> arguments(argv, argv + argc);
  testing::InitGoogleMock(&argc, argv);
  if (!inCopy && !testing::GTEST_FLAG(list_tests)) return RunInCopy(program, arguments);
  quillmar::contract::ProgramArguments().assign(argv + 1, argv + argc);
  quillmar::platform::AttachToImage(program.string());
  const int result = RUN_ALL_TESTS();
  // A filter that names no test must not count as a success.
  return testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 1 : result;
}
