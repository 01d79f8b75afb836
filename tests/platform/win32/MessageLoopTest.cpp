// Pumping, timers and the wait for a program within a host's message loop.
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/Messages.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

using namespace std::chrono_literals;

constexpr char kChildProgram[] = "platform_win32_child.exe";

// The exit code of a request to quit that is in the thread's queue; removes it.
std::optional<int> TakeQuitRequest() {
  MSG message;
  if (PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) == 0) return std::nullopt;
  return static_cast<int>(message.wParam);
}

std::string ProgramFolder() {
  const std::string program = ModulePath(nullptr);
  return program.substr(0, program.find_last_of('\\'));
}

std::optional<Process> StartChild(const std::string& commandLine) {
  return StartProgram({ProgramFolder() + "\\" + kChildProgram, commandLine, ProgramFolder(),
                       ShowMode::MinimizedWithoutActivation});
}

// Pumps until the condition holds; the limit only keeps a broken build from hanging.
template <class Condition>
bool PumpUntil(Condition condition) {
  for (int tries = 0; tries < 2000 && !condition(); ++tries) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    PumpMessages();
  }
  return condition();
}

TEST(MessageLoop, LeavesARequestToQuitToTheHost) {
  bool expired = false;
  StartTimer(1ms, [&](std::uintptr_t) { expired = true; });
  Sleep(40);
  PostQuitMessage(33);
  PumpMessages();
  EXPECT_TRUE(expired);
  PumpMessages();
  EXPECT_EQ(TakeQuitRequest(), 33);
  EXPECT_EQ(TakeQuitRequest(), std::nullopt);
}

TEST(Timers, MayStartAnotherAndThrow) {
  int expiries = 0;
  StartTimer(1ms, [&](std::uintptr_t first) {
    StartTimer(1ms, [&, first](std::uintptr_t) { ++expiries; });
    StopTimer(first);
    ++expiries;
    throw std::runtime_error("expired");
  });
  EXPECT_TRUE(PumpUntil([&] { return expiries == 2; }));
  Sleep(40);
  MSG message;
  EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE));
}

TEST(ProcessWait, DispatchesMessagesUntilTheProgramEnds) {
  bool expired = false;
  StartTimer(50ms, [&](std::uintptr_t) { expired = true; });
  PostQuitMessage(7);
  auto child = StartChild("300");
  ASSERT_TRUE(child.has_value());
  EXPECT_TRUE(child->WaitUntilIdle());
  child->WaitUntilEndedPumpingMessages();
  EXPECT_TRUE(expired);
  EXPECT_EQ(TakeQuitRequest(), 7);
  EXPECT_FALSE(child->WaitUntilIdle());
  child->WaitUntilEndedPumpingMessages();
}

TEST(ProcessStart, TakesAFullPathOnly) {
  SetCurrentDirectoryA(ProgramFolder().c_str());
  for (const std::string folder : {"", ".\\", "\\"}) {
    EXPECT_FALSE(StartProgram({folder + kChildProgram, "0", {}}).has_value()) << folder;
  }
}

}  // namespace
}  // namespace quillmar::platform
