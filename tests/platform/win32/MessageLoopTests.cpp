// Pumping, timers and the wait for a program within a host's message loop.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "Child.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

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
  const std::string folder = ProgramFolder();
  return StartProgram({folder + "\\" + QM_CHILD_PROGRAM, commandLine, folder,
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

TEST(Timers, ExpireOnceInTheirOrder) {
  std::vector<std::uintptr_t> expired;
  const auto note = [&](std::uintptr_t timer) { expired.push_back(timer); };
  const std::uintptr_t late = StartTimer(60ms, note);
  const std::uintptr_t early = StartTimer(10ms, note);
  const std::uintptr_t stopped = StartTimer(10ms, note);
  ASSERT_NE(late, 0U);
  StopTimer(stopped);
  StopTimer(stopped);
  EXPECT_TRUE(PumpUntil([&] { return expired.size() >= 2; }));
  Sleep(40);
  MSG message;
  EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE));
  PumpMessages();
  EXPECT_THAT(expired, ElementsAre(early, late));
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
}

TEST(Processes, DispatchMessagesUntilTheProgramEnds) {
  bool expired = false;
  StartTimer(50ms, [&](std::uintptr_t) { expired = true; });
  PostQuitMessage(7);
  auto child = StartChild("wait 300");
  ASSERT_TRUE(child.has_value());
  EXPECT_TRUE(child->WaitUntilIdle());
  child->WaitUntilEndedPumpingMessages();
  EXPECT_TRUE(expired);
  EXPECT_EQ(TakeQuitRequest(), 7);
  EXPECT_FALSE(child->WaitUntilIdle());
  child->WaitUntilEndedPumpingMessages();
}

TEST(Processes, AreStartedByFullPathOnly) {
  SetCurrentDirectoryA(ProgramFolder().c_str());
  for (const char* program : {"", QM_CHILD_PROGRAM, ".\\" QM_CHILD_PROGRAM, "C:\\none\\none.exe"}) {
    EXPECT_FALSE(StartProgram({program, "wait 0", {}}).has_value()) << program;
  }
}

}  // namespace
}  // namespace quillmar::platform
