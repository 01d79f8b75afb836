// What the system and the library's entry point tell the module, seen in a process of its own.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "Child.h"
#include "platform/Files.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/System.h"

namespace quillmar::platform {
namespace {

struct LifeCase {
  const char* verdict;
  const char* end;
  const char* events;
};

const LifeCase kLives[] = {
    {"accept", "free", "AD"},
    {"accept", "exit", "AE"},
    {"refuse", "free", "AF"},
    {"throw", "free", "AF"},
};

TEST(EntryPoint, TellsTheModuleOfItsAttachAndEnd) {
  const std::string program = ModulePath(nullptr);
  const std::string folder = program.substr(0, program.find_last_of('\\') + 1);
  for (const LifeCase& life : kLives) {
    const std::string log = MakeTempFile(TempFolder(), "QmE", "log");
    auto child = StartProgram(
        {folder + QM_CHILD_PROGRAM,
         std::string("load ") + QM_CHILD_LIBRARY + " " + log + " " + life.verdict + " " + life.end,
         folder});
    ASSERT_TRUE(child.has_value());
    child->WaitUntilEndedPumpingMessages();
    std::ifstream file(log, std::ios::binary);
    const std::string events(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(events, life.events) << life.verdict << ", " << life.end;
    file.close();
    EXPECT_TRUE(RemoveFile(log));
  }
}

}  // namespace
}  // namespace quillmar::platform
