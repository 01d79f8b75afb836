// Notifications between processes.
#include "companions/ChildProcess.h"
#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

class PeersTest : public StoreFixture {
 protected:
  std::string program = machine.Install("SuiteClient.exe", machine.Folder());
  ChildProcess peer{machine.HostPath(program), {suite.Folder()}};
};

TEST_F(PeersTest, NotificationsReachTheOtherProcess) {
  ASSERT_EQ(peer.Ask("subscribe"), "1");
  EXPECT_NE(suite.ipc.IsProcessRunning("suiteclient.exe"), 0);
  peer.Tell("wait");
  EXPECT_NE(suite.ipc.SendModalMessage(1005, 7, "now"), 0);
  EXPECT_EQ(peer.Answer(), "1005 7 now;");
  peer.Tell("wait");
  EXPECT_NE(suite.ipc.SendModelessMessage(5000, 3, "\xB3"), 0);
  EXPECT_EQ(peer.Answer(), "5000 3 \xB3;");
}

TEST_F(PeersTest, AProtocolThatTheReceiverHasOpenIsReadAgain) {
  ASSERT_EQ(peer.Ask("subscribe"), "1");
  ASSERT_EQ(peer.Ask("open\tP1"), "1");
  ASSERT_EQ(peer.Ask("put\tP1\tTessioCallParam\tUnit\tmm"), "1");
  ASSERT_EQ(peer.Ask("post\t4101\t0\tP1"), "1");
  ASSERT_EQ(peer.Ask("wait"), "4101 0 P1;");  // a sender receives too
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_EQ(suite.Get("P1", "TessioCallParam", "Unit"), "mm");
  ASSERT_TRUE(suite.Put("P1", "TessioCallParam", "MeasuredValue", "12.5"));
  ASSERT_EQ(peer.Ask("put\tP1\tOwn\tk\tv"), "1");
  peer.Tell("wait");
  EXPECT_NE(suite.ipc.SendModelessMessage(4102, 0, "P1"), 0);
  EXPECT_EQ(peer.Answer(), "4102 0 P1 12.5;");
  // What the receiver had not stored yet is still there.
  EXPECT_EQ(peer.Ask("get\tP1\tOwn\tk"), "v");
}

}  // namespace
}  // namespace quillmar::test
