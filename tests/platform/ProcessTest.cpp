// Programs started with a command line and a working folder.
#include "platform/Processes.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "platform/Files.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

class Processes : public testing::Test {
 protected:
  TestMachine machine;
  std::string program = machine.Install(QM_TEST_PROGRAM, machine.Folder());
};

struct LineCase {
  const char* line;
  const char* arguments;
};

TEST_F(Processes, SplitTheirCommandLine) {
  const LineCase cases[] = {
      {"x arguments", ""},
      {"\"C:\\a b\\x.exe\" arguments a b", "a\nb\n"},
      {"x arguments  \t a\tb ", "a\nb\n"},
      {"x arguments \"a b\" c", "a b\nc\n"},
      {"x arguments a\"b c\"d", "ab cd\n"},
      {"x arguments \"\" b", "\nb\n"},
      {"x arguments a\\b\\\\c C:\\d\\", "a\\b\\\\c\nC:\\d\\\n"},
      {"x arguments a\\\"b \"c\\\\\" d", "a\"b\nc\\\nd\n"},
      {"x arguments \"a\\\\\\\"b\"", "a\\\"b\n"},
      {"x arguments \xB3\xA3", "\xB3\xA3\n"},
  };
  for (const LineCase& row : cases) {
    std::optional<Process> process =
        StartProgram({program, row.line, machine.Folder(), ShowMode::MinimizedWithoutActivation});
    ASSERT_TRUE(process.has_value()) << row.line;
    process->WaitUntilEndedPumpingMessages();
    std::string written = machine.ReadFile(machine.InFolder("arguments.txt"));
    std::size_t own = written.find("arguments\n");
    ASSERT_NE(own, std::string::npos) << row.line;
    EXPECT_EQ(written.substr(own + 10), row.arguments) << row.line;
  }
}

TEST_F(Processes, NeedAProgramAndAFolder) {
  machine.WriteFile(machine.InFolder("text.exe"), "no program");
  const ProgramStart cases[] = {
      {machine.InFolder("absent.exe"), "x", "", ShowMode::Normal},
      {machine.InFolder("text.exe"), "x", "", ShowMode::Normal},
      {machine.Folder(), "x", "", ShowMode::Normal},
      {program, "x arguments", machine.InFolder("absent"), ShowMode::Normal},
      {"", "", "", ShowMode::Normal},
  };
  for (const ProgramStart& start : cases) {
    EXPECT_FALSE(StartProgram(start).has_value()) << start.program;
  }
}

TEST_F(Processes, LiveOnWithoutTheirObject) {
  ASSERT_TRUE(StartProgram({program, "x sleep 100", machine.Folder(), ShowMode::Normal}));
  EXPECT_FALSE(FileExists(machine.InFolder("ended.txt")));
  for (int i = 0; i < 1000 && !FileExists(machine.InFolder("ended.txt")); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(FileExists(machine.InFolder("ended.txt")));
}

TEST_F(Processes, CanBeWaitedForAfterTheirEnd) {
  std::optional<Process> process =
      StartProgram({program, "x sleep 0", machine.Folder(), ShowMode::Normal});
  ASSERT_TRUE(process.has_value());
  process->WaitUntilEndedPumpingMessages();
  EXPECT_TRUE(FileExists(machine.InFolder("ended.txt")));
  process->WaitUntilEndedPumpingMessages();
}

}  // namespace
}  // namespace quillmar::platform
