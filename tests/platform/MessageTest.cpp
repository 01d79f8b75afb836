// Hidden windows, posted messages and timers.
#include "platform/Messages.h"

#include <gmock/gmock.h>

#include <thread>

#include "platform/Processes.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTemplate = 4000;

// Writes down what it is told; may do something more on a message.
struct Handler : WindowHandler {
  void OnMessage(unsigned message) override {
    messages.push_back(message);
    if (onMessage) onMessage();
  }
  void OnShown() override { ++shown; }

  std::vector<unsigned> messages;
  int shown = 0;
  std::function<void()> onMessage;
};

class Messages : public testing::Test {
 protected:
  // Dispatches messages until `done` or ten seconds have passed.
  static void PumpUntil(const std::function<bool()>& done) {
    auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!done() && std::chrono::steady_clock::now() < deadline) {
      PumpMessages();
      std::this_thread::sleep_for(1ms);
    }
  }

  TestMachine machine;
  Handler handler;
  unsigned first = RegisterMessage("QuillmarTestFirst");
  unsigned second = RegisterMessage("QuillmarTestSecond");
  std::unique_ptr<HiddenWindow> window = HiddenWindow::Create(nullptr, kTemplate, handler);
};

TEST_F(Messages, RegistersNamesWithoutRegardToCase) {
  EXPECT_EQ(RegisterMessage("QUILLMARtestfirst"), first);
  EXPECT_NE(first, second);
  EXPECT_GE(first, 0xC000U);
  EXPECT_LE(first, 0xFFFFU);
  EXPECT_EQ(RegisterMessage(""), 0U);
}

TEST_F(Messages, DispatchesPostedMessagesInOrder) {
  for (unsigned message : {first, second, first}) {
    EXPECT_TRUE(PostToWindow(window->Handle(), message));
  }
  EXPECT_THAT(handler.messages, IsEmpty());
  PumpMessages();
  EXPECT_THAT(handler.messages, ElementsAre(first, second, first));
}

TEST_F(Messages, DispatchesWhatIsPostedMeanwhile) {
  handler.onMessage = [&] {
    if (handler.messages.size() == 1) PostToWindow(window->Handle(), second);
  };
  PostToWindow(window->Handle(), first);
  PumpMessages();
  EXPECT_THAT(handler.messages, ElementsAre(first, second));
}

TEST_F(Messages, MayBeEnteredAgain) {
  handler.onMessage = [&] {
    if (handler.messages.size() == 1) PumpMessages();
  };
  PostToWindow(window->Handle(), first);
  PostToWindow(window->Handle(), second);
  PumpMessages();
  EXPECT_THAT(handler.messages, ElementsAre(first, second));
}

TEST_F(Messages, TellsOfBeingShownOnce) {
  window->Show(true);
  window->Show(true);
  EXPECT_EQ(handler.shown, 1);
  window->Show(false);
  EXPECT_EQ(handler.shown, 1);
  window->Show(true);
  EXPECT_EQ(handler.shown, 2);
}

TEST_F(Messages, KnowsNoMessageForADeadWindow) {
  QmWindow handle = window->Handle();
  EXPECT_TRUE(IsLiveWindow(handle));
  PostToWindow(handle, first);
  window.reset();
  EXPECT_FALSE(IsLiveWindow(handle));
  EXPECT_FALSE(PostToWindow(handle, first));
  EXPECT_FALSE(IsLiveWindow(0));
  PumpMessages();
  EXPECT_THAT(handler.messages, IsEmpty());
}

TEST_F(Messages, ForgetsAnAbandonedWindow) {
  PostToWindow(window->Handle(), first);
  window->Abandon();
  window.reset();
  PumpMessages();
  EXPECT_THAT(handler.messages, IsEmpty());
}

TEST_F(Messages, AreReceivedFromOtherThreads) {
  QmWindow handle = window->Handle();
  std::thread poster([&] {
    for (int i = 0; i < 100; ++i) PostToWindow(handle, first);
    PumpMessages();  // of this thread, which has no window
  });
  PumpUntil([&] { return handler.messages.size() == 100; });
  poster.join();
  EXPECT_THAT(handler.messages, testing::SizeIs(100));
}

TEST_F(Messages, TimersFireOnceBehindPostedMessages) {
  std::vector<std::string> order;
  std::uintptr_t told = 0;
  handler.onMessage = [&] { order.emplace_back("message"); };
  std::uintptr_t timer = StartTimer(300ms, [&](std::uintptr_t id) {
    order.emplace_back("timer");
    told = id;
  });
  EXPECT_NE(timer, 0U);
  PumpMessages();
  EXPECT_THAT(order, IsEmpty());
  std::this_thread::sleep_for(350ms);
  PostToWindow(window->Handle(), first);
  PumpUntil([&] { return order.size() == 2; });
  EXPECT_THAT(order, ElementsAre("message", "timer"));
  EXPECT_EQ(told, timer);
  std::this_thread::sleep_for(350ms);
  PumpMessages();
  EXPECT_THAT(order, testing::SizeIs(2));
}

TEST_F(Messages, TimersComeInTheOrderOfTheirTimes) {
  std::vector<int> order;
  StartTimer(60ms, [&](std::uintptr_t) { order.push_back(60); });
  StartTimer(20ms, [&](std::uintptr_t) { order.push_back(20); });
  std::uintptr_t stopped = StartTimer(30ms, [&](std::uintptr_t) { order.push_back(30); });
  StopTimer(stopped);
  StopTimer(0);
  PumpUntil([&] { return order.size() == 2; });
  EXPECT_THAT(order, ElementsAre(20, 60));
}

TEST_F(Messages, AreDispatchedWhileAProgramRuns) {
  std::string program = machine.Install(QM_TEST_PROGRAM, machine.Folder());
  std::optional<Process> process =
      StartProgram({program, QM_TEST_PROGRAM " sleep 400", machine.Folder(), ShowMode::Normal});
  ASSERT_TRUE(process.has_value());
  bool expired = false;
  StartTimer(50ms, [&](std::uintptr_t) {
    expired = true;
    PostToWindow(window->Handle(), first);
  });
  QmWindow handle = window->Handle();
  std::thread poster([&] {
    std::this_thread::sleep_for(20ms);
    PostToWindow(handle, second);
  });
  process->WaitUntilEndedPumpingMessages();
  poster.join();
  EXPECT_TRUE(expired);
  EXPECT_THAT(handler.messages, testing::UnorderedElementsAre(first, second));
  EXPECT_EQ(machine.ReadFile(machine.InFolder("ended.txt")), "sleep\n");
}

}  // namespace
}  // namespace quillmar::platform
