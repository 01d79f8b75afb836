// The buffer carries a protocol from one store to another.
#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

using BufferTest = StoreFixture;

std::string EveryByte() {
  std::string text;
  for (int i = 1; i < 256; ++i) text += static_cast<char>(i);
  return text;
}

TEST_F(BufferTest, AProtocolArrivesWholeInAnotherStore) {
  const std::string values[] = {"",
                                "a;b,c|d%7C",
                                "line\r\nline\n\ttab",
                                "x<@EL>y<@PID>z<@GMHEL><@NEXT_PROT>",
                                "<<@<@",
                                " blanks ",
                                "%",
                                "%4",
                                "%G1",
                                "KC1|K|a|b|c",
                                EveryByte(),
                                std::string(70000, '<')};
  const std::string names[] = {"plain", "a;b", "<@EL>", "%25", "sp ace|", "\xB3\x01"};
  ASSERT_TRUE(suite.Open("P1"));
  for (const std::string& name : names) {
    for (const std::string& value : values) {
      const std::string keyword = name + std::to_string(&value - values);
      ASSERT_TRUE(suite.Put("P1", name.c_str(), keyword.c_str(), value.c_str()));
    }
  }
  ASSERT_NE(suite.storage.Com_PutDataParam("P1", "d|1", "1,5", "<@EL>"), 0);
  ASSERT_NE(suite.storage.Com_PutModelID("P1", "model"), 0);
  ASSERT_NE(suite.storage.Com_PutPartKey("P1", "part"), 0);
  ASSERT_NE(suite.storage.Com_PutViewKey("P1", "view"), 0);
  ASSERT_NE(suite.storage.Com_PutStandard("P1", "ISO"), 0);
  ASSERT_NE(suite.storage.Com_PutProtocol("P1", "M1", "M1"), 0);
  ASSERT_NE(suite.storage.Com_SetVersion("P1", 1, 4), 0);
  ASSERT_NE(suite.links.Link_SetLinkFrom("P1", "D1", "#P2@D2"), 0);
  const auto sent = suite.Buffer("P1");
  for (const std::string& item : sent) EXPECT_EQ(item.find("<@"), std::string::npos) << item;

  Suite other(InstallSuite(machine, "Other"));
  ASSERT_TRUE(other.Open("Q"));
  ASSERT_NE(other.storage.Com_SetVersion("Q", 1, 0), 0);
  ASSERT_TRUE(other.Put("Q", "Old", "old", "old"));
  ASSERT_TRUE(other.Close("Q"));
  ASSERT_TRUE(other.Open("Q"));
  ASSERT_TRUE(other.PutBuffer("Q", sent));
  ASSERT_TRUE(other.Close("Q"));
  other.Reload();
  ASSERT_TRUE(other.Open("Q"));
  EXPECT_EQ(other.Buffer("Q"), sent);
  EXPECT_EQ(other.Get("Q", "Old", "old"), std::nullopt);
  for (const std::string& name : names) {
    for (const std::string& value : values) {
      const std::string keyword = name + std::to_string(&value - values);
      std::string buffer(80000, ' ');
      ASSERT_NE(other.storage.Com_GetKeyWord("Q", name.c_str(), keyword.c_str(), buffer.data()), 0);
      EXPECT_EQ(std::string(buffer.c_str()), value) << keyword;
    }
  }
}

TEST_F(BufferTest, NothingWrittenMeansNoItems) {
  ASSERT_TRUE(suite.Open("P1"));
  QmStringList* list = nullptr;
  ASSERT_NE(suite.storage.Com_GetBuffer("P1", &list), 0);
  EXPECT_TRUE(TextsOf(list).empty());
}

TEST_F(BufferTest, TextsOfOthersComeOutAsTheyWentIn) {
  const std::vector<std::string> foreign = {"a", "b", "", "%X|;\n", EveryByte(), "KC2|later"};
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.PutBuffer("P1", foreign));
  EXPECT_EQ(suite.Buffer("P1"), foreign);
  ASSERT_TRUE(suite.Close("P1"));
  suite.Reload();
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.Buffer("P1"), foreign);

  // Beside texts of our own, and with a marker in them, which is wrapped.
  ASSERT_TRUE(suite.PutBuffer("P1", {"KC1|V|1|0", "other<@EL>", "KC1|K|S|k|v", "plain"}));
  EXPECT_EQ(suite.Buffer("P1"),
            (std::vector<std::string>{"KC1|V|1|0", "KC1|K|S|k|v", "KC1|T|other%3C@EL>", "plain"}));
  ASSERT_TRUE(suite.PutBuffer("P1", suite.Buffer("P1")));
  EXPECT_EQ(suite.Buffer("P1").size(), 4u);
}

TEST_F(BufferTest, AVersionThatIsNotCarriedStays) {
  int major = 0;
  int minor = 0;
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_NE(suite.storage.Com_SetVersion("P1", 1, 0), 0);
  ASSERT_TRUE(suite.PutBuffer("P1", {"a", "b"}));
  ASSERT_NE(suite.storage.Com_GetVersion("P1", &major, &minor), 0);
  EXPECT_EQ(major, 1);
  ASSERT_TRUE(suite.PutBuffer("P1", {"KC1|V|2|1"}));
  ASSERT_NE(suite.storage.Com_GetVersion("P1", &major, &minor), 0);
  EXPECT_EQ(major, 2);
  EXPECT_EQ(minor, 1);
}

TEST_F(BufferTest, MalformedItemsAreRefusedAndNothingChanges) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "S", "k", "v"));
  const auto before = suite.Buffer("P1");
  for (const char* item : {"KC1|",
                           "KC1|V",
                           "KC1|V|1",
                           "KC1|V|1|0|0",
                           "KC1|V|one|0",
                           "KC1|V||0",
                           "KC1|V|99999999999|0",
                           "KC1|K|S|k",
                           "KC1|K|S|k|v|u",
                           "KC1|K||k|v",
                           "KC1|K|S||v",
                           "KC1|D|S|k|v",
                           "KC1|K|S|k|%",
                           "KC1|K|S|k|%4",
                           "KC1|K|S|k|%zz",
                           "KC1|K|S|k|%00",
                           "KC1|K|S|k|%a0",
                           "KC1|K|S|k|a<b",
                           "KC1|K|S|k|\x01",
                           "KC1|K|S|k|\xB3",
                           "KC1|X|a",
                           "KC1|KSS|k|v",
                           "KC1|T",
                           "KC1|T|a|b"}) {
    EXPECT_FALSE(suite.PutBuffer("P1", {"KC1|V|1|0", "KC1|K|S|other|1", item})) << item;
    EXPECT_EQ(suite.Buffer("P1"), before) << item;
  }
}

TEST_F(BufferTest, AListIsReadAsFarAsItIsSound) {
  ASSERT_TRUE(suite.Open("P1"));
  StringList list({"one", "two", "three"});
  QmStringList* raw = list.Get();
  raw->count = 100;  // more than there are
  ASSERT_NE(suite.storage.Com_PutBuffer("P1", raw), 0);
  EXPECT_EQ(suite.Buffer("P1").size(), 3u);
  raw->count = 2;
  ASSERT_NE(suite.storage.Com_PutBuffer("P1", raw), 0);
  EXPECT_EQ(suite.Buffer("P1"), (std::vector<std::string>{"one", "two"}));
}

TEST_F(BufferTest, TheListStaysWhileOtherCallsAreMade) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "S", "k", "before"));
  QmStringList* list = nullptr;
  ASSERT_NE(suite.storage.Com_GetBuffer("P1", &list), 0);
  ASSERT_TRUE(suite.Open("P2"));
  ASSERT_NE(suite.storage.Com_PutBuffer("P2", list), 0);
  EXPECT_EQ(suite.Get("P2", "S", "k"), "before");
  ASSERT_NE(suite.storage.Com_PutBuffer("P1", list), 0);
  EXPECT_EQ(suite.Get("P1", "S", "k"), "before");
}

}  // namespace
}  // namespace quillmar::test
