// Links between protocols, and where they stand in the record.
#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

class LinksTest : public StoreFixture {
 protected:
  LinksTest() { suite.Open("P1"); }

  const LinkTable& links = suite.links;
};

struct IncomingLink {
  std::string first, second;
  int enabled = -1, level = -1;
  bool operator==(const IncomingLink&) const = default;
};

IncomingLink LinkFrom(const LinkTable& links, int index) {
  Growing first, second;
  IncomingLink link;
  if (links.Link_GetLinkFrom("P1", index, first, second, &link.enabled, &link.level) == 0)
    return {};
  link.first = first.Text();
  link.second = second.Text();
  return link;
}

TEST_F(LinksTest, IncomingLinksAreNumberedNamedAndSwitched) {
  EXPECT_EQ(links.Link_GetLinksFromCount("P1"), 0);
  ASSERT_NE(links.Link_SetLinkFrom("P1", "NewView", "P2@NewView"), 0);
  ASSERT_NE(links.Link_SetLinkFrom("P1", "d1", "#D2/2"), 0);
  ASSERT_NE(links.Link_SetLinkFrom("P1", "D1", "#D3"), 0);  // changes the link
  EXPECT_EQ(links.Link_GetLinksFromCount("P1"), 2);
  EXPECT_EQ(LinkFrom(links, 1), (IncomingLink{"NewView", "P2@NewView", 1, 0}));
  EXPECT_EQ(LinkFrom(links, 2), (IncomingLink{"d1", "#D3", 1, 0}));
  EXPECT_EQ(LinkFrom(links, 0), IncomingLink{});
  EXPECT_EQ(LinkFrom(links, 3), IncomingLink{});

  ASSERT_NE(links.Link_EnableLinkFrom("P1", "D1", 0), 0);
  ASSERT_NE(links.Link_SetLevelLinkFrom("P1", "D1", 4, 5), 0);
  EXPECT_EQ(LinkFrom(links, 2), (IncomingLink{"d1", "#D3", 0, 4}));
  Growing text;
  int enabled = 0, level = 0;
  ASSERT_NE(links.Link_GetLinkFrom2("P1", "newview", text, &enabled, &level), 0);
  EXPECT_EQ(text.Text(), "P2@NewView");
  EXPECT_EQ(enabled, 1);
  // Callers that know nothing of the two integers pass none.
  EXPECT_NE(links.Link_GetLinkFrom2("P1", "newview", text, nullptr, nullptr), 0);

  ASSERT_NE(links.Link_DeleteLinkFrom("P1", "NewView"), 0);
  EXPECT_EQ(links.Link_GetLinksFromCount("P1"), 1);
  EXPECT_EQ(LinkFrom(links, 1).first, "d1");
  EXPECT_EQ(links.Link_DeleteLinkFrom("P1", "NewView"), 0);
  EXPECT_EQ(links.Link_EnableLinkFrom("P1", "NewView", 1), 0);
  EXPECT_EQ(links.Link_SetLevelLinkFrom("P1", "NewView", 1, 1), 0);
}

TEST_F(LinksTest, ALinkErasedInTheStoreIsGoneWithItsState) {
  ASSERT_NE(links.Link_SetLinkFrom("P1", "NewView", "P2@NewView"), 0);
  ASSERT_NE(links.Link_EnableLinkFrom("P1", "NewView", 0), 0);
  ASSERT_TRUE(suite.Put("P1", "LinksFrom", "NewView", nullptr));
  EXPECT_EQ(links.Link_GetLinksFromCount("P1"), 0);
  ASSERT_NE(links.Link_SetLinkFrom("P1", "NewView", "P3"), 0);
  EXPECT_EQ(LinkFrom(links, 1), (IncomingLink{"NewView", "P3", 1, 0}));
}

TEST_F(LinksTest, ParentsAreTheProtocolsThatLinksReferTo) {
  const struct {
    const char* text;
    const char* parents;
  } cases[] = {{"P2@NewView", "P2"},
               {"P2", "P2"},
               {"", ""},
               {"#D1/2", ""},
               {"#P2@D1+2*(P3@D2-P2@D3)", "P2,P3"},
               {"#@x", ""},
               {"#P2@", "P2"}};
  for (const auto& one : cases) {
    ASSERT_NE(links.Link_SetLinkFrom("P1", "link", one.text), 0);
    Growing byIndex, byName, whole;
    EXPECT_NE(links.Link_GetLinkFromParentList("P1", 1, byIndex), 0);
    EXPECT_NE(links.Link_GetLinkFromParentList2("P1", "link", byName), 0);
    EXPECT_NE(links.Link_GetParentsList("P1", whole), 0);
    EXPECT_EQ(byIndex.Text(), one.parents) << one.text;
    EXPECT_EQ(byName.Text(), one.parents) << one.text;
    EXPECT_EQ(whole.Text(), one.parents) << one.text;
  }
  ASSERT_NE(links.Link_SetLinkFrom("P1", "a", "P3@NewView"), 0);
  ASSERT_NE(links.Link_SetLinkFrom("P1", "b", "#P2@x+P4@y"), 0);
  Growing whole;
  EXPECT_NE(links.Link_GetParentsList("P1", whole), 0);
  EXPECT_EQ(whole.Text(), "P2,P3,P4");
  EXPECT_EQ(links.Link_GetLinkFromParentList("P1", 9, whole), 0);
  EXPECT_EQ(links.Link_GetLinkFromParentList2("P1", "none", whole), 0);
}

TEST_F(LinksTest, OutgoingLinksArePairsAndTheirProtocolsAreKeywords) {
  const std::pair<const char*, const char*> pairs[] = {
      {"NewView", "C1"}, {"NewView", "C2"}, {"a,b%2C", "C1"}, {"", "C3"}};
  for (const auto& [first, second] : pairs) {
    ASSERT_NE(links.Link_SetLinkTo("P1", first, second), 0);
    ASSERT_NE(links.Link_SetLinkTo("P1", first, second), 0);  // is there already
  }
  EXPECT_EQ(suite.KeyList("P1", "LinksTo"), "C1;C2;C3");
  const auto all = [this] {
    std::string text;
    for (int i = 1; i <= links.Link_GetLinksToCount("P1"); ++i) {
      Growing first, second;
      EXPECT_NE(links.Link_GetLinkTo("P1", i, first, second), 0);
      text += first.Text() + ">" + second.Text() + " ";
    }
    return text;
  };
  EXPECT_EQ(all(), "NewView>C1 a,b%2C>C1 NewView>C2 >C3 ");
  ASSERT_NE(links.Link_DeleteLinkTo("P1", "newview", "C1"), 0);
  EXPECT_EQ(links.Link_DeleteLinkTo("P1", "NewView", "C1"), 0);
  ASSERT_NE(links.Link_DeleteLinkTo("P1", "", "C3"), 0);
  EXPECT_EQ(all(), "a,b%2C>C1 NewView>C2 ");
  EXPECT_EQ(suite.KeyList("P1", "LinksTo"), "C1;C2");
  Growing text;
  EXPECT_EQ(links.Link_GetLinkTo("P1", 0, text, text), 0);
  EXPECT_EQ(links.Link_GetLinkTo("P1", 3, text, text), 0);
}

TEST_F(LinksTest, NothingIsLinkedInAProtocolThatIsNotOpen) {
  Growing text;
  EXPECT_EQ(links.Link_SetLinkFrom("P9", "a", "b"), 0);
  EXPECT_EQ(links.Link_SetLinkTo("P9", "a", "b"), 0);
  EXPECT_EQ(links.Link_GetParentsList("P9", text), 0);
  EXPECT_EQ(links.Link_GetLinksFromCount("P9"), 0);
  EXPECT_EQ(links.Link_GetLinksFromCount(nullptr), 0);
  EXPECT_EQ(links.Link_SetLinkFrom("P1", nullptr, "b"), 0);
  EXPECT_EQ(links.Link_SetLinkFrom("P1", "a", nullptr), 0);
  EXPECT_EQ(links.Link_SetLinkTo("P1", "a", nullptr), 0);
  EXPECT_EQ(links.Link_Translate(nullptr, 10), 0);
}

TEST_F(LinksTest, UniqueIdentifiersAreThoseOfNoProtocol) {
  Growing first, second;
  ASSERT_NE(links.Link_CreateUniquePID(first), 0);
  ASSERT_NE(links.Link_CreateUniquePID(second), 0);
  EXPECT_NE(first.Text(), second.Text());
  EXPECT_LE(first.Text().size(), 25u);
  EXPECT_EQ(State(first.Text()), QM_PROTOCOL_MISSING);
  EXPECT_TRUE(suite.Open(first.Text()));
}

}  // namespace
}  // namespace quillmar::test
