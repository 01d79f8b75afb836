// Notifications inside one process.
#include <chrono>
#include <thread>

#include "companions/ChildProcess.h"
#include "companions/StoreFixture.h"
#include "platform/Messages.h"

namespace quillmar::test {
namespace {

class TessioTest : public StoreFixture {
 protected:
  static int QM_CDECL Receive(void* context, int number, int value, const char* text) {
    auto* test = static_cast<TessioTest*>(context);
    test->received += std::to_string(number) + " " + std::to_string(value) + " " + text + ";";
    if (number == 1) test->ipc.SendModelessMessage(2, 0, "from inside");
    if (number == 3) test->ipc.Tessio_Unsubscribe(test->subscription);
    if (number == 5) test->ipc.Tessio_Unsubscribe(test->later);
    return 1;
  }

  // Runs the message loop until something more has come in, at most for that time.
  void PumpUntilReceived(std::chrono::milliseconds longest = std::chrono::seconds(2)) {
    const std::string before = received;
    const auto end = std::chrono::steady_clock::now() + longest;
    while (received == before && std::chrono::steady_clock::now() < end) {
      platform::PumpMessages();
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  }

  // Longer than what waits is late.
  static constexpr std::chrono::milliseconds kNothingComes{60};

  const IpcTable& ipc = suite.ipc;
  std::string received;
  int subscription = ipc.Tessio_Subscribe(&Receive, this);
  int later = 0;
};

TEST_F(TessioTest, ModalArrivesAtOnceAndModelessFromTheMessageLoop) {
  ASSERT_NE(subscription, 0);
  EXPECT_NE(ipc.SendModelessMessage(5000, 3, "P1"), 0);
  EXPECT_NE(ipc.SendModelessMessage(4102, 0, nullptr), 0);
  EXPECT_EQ(received, "");
  EXPECT_NE(ipc.SendModalMessage(1005, 0, "now"), 0);
  EXPECT_EQ(received, "1005 0 now;");
  PumpUntilReceived();
  EXPECT_EQ(received, "1005 0 now;5000 3 P1;4102 0 ;");
}

TEST_F(TessioTest, AReceiverMaySendAndLeave) {
  ipc.SendModelessMessage(1, 0, "");
  ipc.SendModelessMessage(3, 0, "");
  PumpUntilReceived();
  EXPECT_EQ(received, "1 0 ;3 0 ;");
  ipc.SendModalMessage(4, 0, "");
  PumpUntilReceived(kNothingComes);
  EXPECT_EQ(received, "1 0 ;3 0 ;");
  EXPECT_EQ(ipc.Tessio_Unsubscribe(subscription), 0);
}

TEST_F(TessioTest, WhoIsUnsubscribedMeanwhileReceivesNothingMore) {
  later = ipc.Tessio_Subscribe(&Receive, this);
  ipc.SendModalMessage(6, 0, "");
  EXPECT_EQ(received, "6 0 ;6 0 ;");
  ipc.SendModalMessage(5, 0, "");
  EXPECT_EQ(received, "6 0 ;6 0 ;5 0 ;");
}

TEST_F(TessioTest, LongTextsAreCut) {
  ipc.SendModalMessage(7, 0, std::string(300, 'x').c_str());
  EXPECT_EQ(received, "7 0 " + std::string(259, 'x') + ";");
}

TEST_F(TessioTest, WhatWaitsAtUnloadIsDropped) {
  ipc.SendModelessMessage(7, 0, "");
  suite.Reload();
  PumpUntilReceived(kNothingComes);
  EXPECT_EQ(received, "");
}

TEST_F(TessioTest, ProgramsAreKnownOnceTheyLogIn) {
  int result = 0;
  EXPECT_EQ(ipc.IsProcessRunning("Quillmar.dll"), 0);
  EXPECT_NE(ipc.LoginToCom(1, nullptr, "Quillmar.dll", 0, &result), 0);
  EXPECT_NE(result, 0);
  EXPECT_NE(ipc.IsProcessRunning("QUILLMAR.DLL"), 0);
  EXPECT_NE(ipc.LoginToComBasic(1, "Other.exe"), 0);
  EXPECT_NE(ipc.IsProcessRunning("other.exe"), 0);
  EXPECT_EQ(ipc.LoginToCom2(1, nullptr, nullptr, 0, &result, 0), 0);
}

TEST_F(TessioTest, ParametersAreStoredBeforeTheNotificationGoesOut) {
  const std::string client = machine.Install("SuiteClient.exe", machine.Folder());
  ChildProcess other(machine.HostPath(client), {suite.Folder()});
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "TessioCallParam", "MeasuredValue", "12.5"));
  ASSERT_TRUE(suite.Put("P1", "TessioCallParam", "Answer", "0"));
  ASSERT_TRUE(suite.Put("P1", "TessioCallParam", "Answer", nullptr));
  EXPECT_EQ(other.Ask("state\tP1"), "0");
  ipc.SendModelessMessage(4102, 0, "P1");
  EXPECT_EQ(State("P1"), QM_PROTOCOL_OPEN);
  ASSERT_EQ(other.Ask("open\tP1"), "1");
  EXPECT_EQ(other.Ask("get\tP1\tTessioCallParam\tMeasuredValue"), "12.5");
  ASSERT_EQ(other.Ask("put\tP1\tTessioCallParam\tAnswer\t1"), "1");
  ASSERT_EQ(other.Ask("close\tP1"), "1");
  ASSERT_TRUE(suite.Put("P1", "TessioCallParam", "MeasuredValue", "13"));
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.Get("P1", "TessioCallParam", "Answer"), "1");
  EXPECT_EQ(suite.Get("P1", "TessioCallParam", "MeasuredValue"), "13");
}

TEST_F(TessioTest, CallsTakeParametersAndFindNobodyToAnswer) {
  const int call = ipc.CreateCJCall("Function");
  ASSERT_NE(call, 0);
  const int number = 42;
  int result = 0;
  char text[8] = "";
  int read = 0;
  EXPECT_NE(ipc.AddCJCallParam(call, 1, &number, sizeof number), 0);
  EXPECT_NE(ipc.AddCJCallParam2(call, 2, "text"), 0);
  EXPECT_EQ(ipc.AddCJCallParam(call + 1, 1, &number, sizeof number), 0);
  EXPECT_NE(ipc.GetCJCallParam(call, 0, &read, sizeof read), 0);
  EXPECT_EQ(read, 42);
  EXPECT_NE(ipc.GetCJCallParam(call, 1, text, sizeof text), 0);
  EXPECT_STREQ(text, "text");
  EXPECT_EQ(ipc.GetCJCallParam(call, 2, &read, sizeof read), 0);
  EXPECT_EQ(ipc.CallCJFunction(call, "Other.exe", 1, 0, &result), 0);
}

}  // namespace
}  // namespace quillmar::test
