// Several processes on one store, and processes that are killed.
#include <sqlite3.h>

#include <chrono>
#include <thread>

#include "companions/ChildProcess.h"
#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

class ProcessesTest : public StoreFixture {
 protected:
  std::unique_ptr<ChildProcess> StartClient() const {
    return std::make_unique<ChildProcess>(machine.HostPath(client),
                                          std::vector<std::string>{suite.Folder()});
  }

  std::string client = machine.Install("SuiteClient.exe", machine.Folder());
};

TEST_F(ProcessesTest, WhatOneClosedTheOtherFinds) {
  const auto host = StartClient();
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "GEAR1"));
  EXPECT_EQ(host->Ask("state\tP1"), "0");
  ASSERT_TRUE(suite.Close("P1"));
  EXPECT_EQ(host->Ask("state\tP1"), "2");
  ASSERT_EQ(host->Ask("open\tP1"), "1");
  EXPECT_EQ(host->Ask("get\tP1\tMain\tDataFile"), "GEAR1");
  ASSERT_EQ(host->Ask("put\tP1\tMain\tResult\t0.5"), "1");
  EXPECT_EQ(State("P1"), QM_PROTOCOL_CLOSED);
  ASSERT_EQ(host->Ask("close\tP1"), "1");
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.Get("P1", "Main", "Result"), "0.5");
}

TEST_F(ProcessesTest, ChangesOfBothAreKept) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "S", "common", "0"));
  ASSERT_TRUE(suite.Put("P1", "S", "erased", "0"));
  ASSERT_TRUE(suite.Close("P1"));
  const auto host = StartClient();
  ASSERT_EQ(host->Ask("open\tP1"), "1");
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_EQ(host->Ask("put\tP1\tS\tcommon\t1"), "1");
  ASSERT_EQ(host->Ask("put\tP1\tS\thost\t1"), "1");
  ASSERT_TRUE(suite.Put("P1", "S", "module", "2"));
  ASSERT_TRUE(suite.Put("P1", "S", "erased", nullptr));
  ASSERT_EQ(host->Ask("close\tP1"), "1");
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.KeyList("P1", "S"), "common;host;module");
  EXPECT_EQ(suite.Get("P1", "S", "common"), "1");
}

TEST_F(ProcessesTest, LinksOfOneAreThoseOfTheOther) {
  const auto host = StartClient();
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_NE(suite.links.Link_SetLinkFrom("P1", "d", "#P2@D1"), 0);
  ASSERT_NE(suite.links.Link_SetLinkTo("P1", "NewView", "C1"), 0);
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_EQ(host->Ask("open\tP1"), "1");
  EXPECT_EQ(host->Ask("links\tP1"), "d<#P2@D1 NewView>C1 ");
  ASSERT_EQ(host->Ask("link\tP1\tNewView\tP3@NewView"), "1");
  ASSERT_EQ(host->Ask("lead\tP1\tNewView\tC2"), "1");
  ASSERT_EQ(host->Ask("close\tP1"), "1");
  ASSERT_TRUE(suite.Open("P1"));
  Growing parents, first, second;
  EXPECT_NE(suite.links.Link_GetParentsList("P1", parents), 0);
  EXPECT_EQ(parents.Text(), "P2,P3");
  ASSERT_EQ(suite.links.Link_GetLinksToCount("P1"), 2);
  EXPECT_NE(suite.links.Link_GetLinkTo("P1", 2, first, second), 0);
  EXPECT_EQ(first.Text() + ">" + second.Text(), "NewView>C2");
}

TEST_F(ProcessesTest, AClosingFailsWhenTheOtherHasErased) {
  const auto host = StartClient();
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_EQ(host->Ask("open\tP1"), "1");
  ASSERT_EQ(host->Ask("put\tP1\tS\tk\tv"), "1");
  ASSERT_NE(suite.storage.Com_EraseProtocol("P1"), 0);
  EXPECT_EQ(host->Ask("close\tP1"), "0");
  EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
}

TEST_F(ProcessesTest, ACalculationHoldsItsProtocolUntilItClosesOrDies) {
  enum class End { Closes, LetsGo, Dies };
  for (const End end : {End::Closes, End::LetsGo, End::Dies}) {
    const auto host = StartClient();
    QmWindow window = 0;
    ASSERT_EQ(host->Ask("open\tP1"), "1");
    EXPECT_EQ(suite.storage.Com_GetOwnerHWND("P1", &window), 0);
    ASSERT_EQ(host->Ask("put\tP1\tGlobals\townerhwnd\t4294967294"), "1");
    EXPECT_EQ(State("P1"), QM_PROTOCOL_HELD_BY_CALCULATION);
    ASSERT_NE(suite.storage.Com_GetOwnerHWND("P1", &window), 0);
    EXPECT_EQ(window, 4294967294u);
    if (end == End::Closes) {
      ASSERT_EQ(host->Ask("close\tP1"), "1");
    }
    if (end == End::LetsGo) {
      ASSERT_EQ(host->Ask("put\tP1\tGlobals\tOwnerHWND\t0"), "1");
    }
    if (end == End::Dies) host->Kill();
    EXPECT_NE(State("P1"), QM_PROTOCOL_HELD_BY_CALCULATION) << static_cast<int>(end);
    EXPECT_EQ(suite.storage.Com_GetOwnerHWND("P1", &window), 0);
  }
}

TEST_F(ProcessesTest, AnotherProcessWithTheNumberOfADeadOneHoldsNothing) {
  const auto host = StartClient();
  ASSERT_EQ(host->Ask("open\tP1"), "1");
  ASSERT_EQ(host->Ask("put\tP1\tGlobals\tOwnerHWND\t7"), "1");
  ASSERT_EQ(State("P1"), QM_PROTOCOL_HELD_BY_CALCULATION);
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(DatabaseFile().string().c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(
      sqlite3_exec(connection, "UPDATE owners SET birth = birth - 1", nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(connection);
  EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
}

TEST_F(ProcessesTest, WhatWasClosedOutlivesAKilledProcess) {
  for (int round = 1; round <= 10; ++round) {
    const std::string value = std::to_string(round);
    const auto host = StartClient();
    ASSERT_EQ(host->Ask("open\tP1"), "1");
    ASSERT_EQ(host->Ask("put\tP1\tS\tclosed\t" + value), "1");
    ASSERT_EQ(host->Ask("close\tP1"), "1");
    ASSERT_EQ(host->Ask("open\tP1"), "1");
    ASSERT_EQ(host->Ask("put\tP1\tS\tclosed\tnot " + value), "1");
    ASSERT_EQ(host->Ask("open\tP" + value), "1");
    host->Kill();
    ASSERT_TRUE(suite.Open("P1"));
    EXPECT_EQ(suite.Get("P1", "S", "closed"), value);
    EXPECT_TRUE(suite.Close("P1"));
    if (round > 1) {
      EXPECT_EQ(State("P" + value), QM_PROTOCOL_MISSING);
    }
  }
}

TEST_F(ProcessesTest, AProcessKilledWhileItWritesLeavesWholeProtocolsOnly) {
  constexpr int kKeywords = 100;
  int kept = 0;
  for (int round = 1; round <= 12; ++round) {
    const auto writer = StartClient();
    ASSERT_EQ(writer->Ask("open\tP1"), "1");
    for (int i = 0; i < kKeywords; ++i) {
      writer->Ask("put\tP1\tS\tk" + std::to_string(i) + "\t" + std::to_string(round));
    }
    writer->Tell("close\tP1");
    std::this_thread::sleep_for(std::chrono::microseconds(60 * round));
    writer->Kill();

    ASSERT_TRUE(suite.Open("P1"));
    const Text first = suite.Get("P1", "S", "k0");
    if (first == std::to_string(round)) kept = round;
    EXPECT_EQ(first, kept == 0 ? Text() : Text(std::to_string(kept)));
    for (int i = 1; i < kKeywords; ++i) {
      EXPECT_EQ(suite.Get("P1", "S", ("k" + std::to_string(i)).c_str()), first);
    }
    ASSERT_TRUE(suite.Close("P1"));
  }
}

}  // namespace
}  // namespace quillmar::test
