// Links between protocols and members of super protocols.
#include "ProtocolFixture.h"

namespace quillmar {
namespace {

class LinksTest : public ProtocolFixture {};

TEST_F(LinksTest, ParameterLinksAreToldFromProtocolLinks) {
  const std::string parent = Stored();
  VXProtocol protocol(context, Stored());
  EXPECT_TRUE(protocol.SetLinkFrom("NewView", parent + "@NewView"));
  EXPECT_TRUE(protocol.WriteLinkParam("width", "D1/2"));
  EXPECT_EQ(protocol.GetLinksFromCount(true), 2);
  EXPECT_EQ(protocol.GetLinksFromCount(false), 1);
  std::string first;
  std::string second;
  int enabled = 7;
  int level = 7;
  EXPECT_TRUE(protocol.GetLinkFrom2("width", second, enabled, level));
  EXPECT_EQ(second, "#D1/2");
  EXPECT_EQ(std::pair(enabled, level), std::pair(1, 0));
  EXPECT_TRUE(protocol.EnableLinkFrom("width", 0));
  EXPECT_TRUE(protocol.SetLevelLinkFrom("width", 4, 5));
  EXPECT_TRUE(protocol.GetLinkFrom2("width", second, enabled, level));
  EXPECT_EQ(std::pair(enabled, level), std::pair(0, 4));
  EXPECT_TRUE(protocol.EnableLinkFrom("width", 3));
  EXPECT_TRUE(protocol.GetLinkFrom(2, first, second, enabled, level));
  EXPECT_EQ(std::pair(enabled, level), std::pair(3, 4));
  EXPECT_EQ(first + second, "width#D1/2");
  EXPECT_TRUE(protocol.DeleteLinkFrom("width"));
  EXPECT_EQ(protocol.GetLinksFromCount(true), 1);
}

TEST_F(LinksTest, ParentsAreListedByLinkAndByProtocol) {
  VXProtocol protocol(context, Stored());
  EXPECT_TRUE(protocol.SetLinkFrom("view", "P2@NewView"));
  EXPECT_TRUE(protocol.SetLinkFrom("sum", "#P3@a+P4@b"));
  std::vector<std::string> parents;
  EXPECT_TRUE(protocol.GetLinkFromParentList(2, parents));
  EXPECT_EQ(parents, (Messages{"P3", "P4"}));
  EXPECT_TRUE(protocol.GetLinkFromParentList2("view", parents));
  EXPECT_EQ(parents, Messages{"P2"});
  EXPECT_TRUE(protocol.GetParentsList(parents));
  EXPECT_EQ(parents, (Messages{"P2", "P3", "P4"}));
}

TEST_F(LinksTest, FailuresAreReportedWithTheirMessage) {
  VXProtocol protocol(context, Stored());
  Reports();
  std::string first = "before";
  std::string second = "before";
  int enabled = 7;
  int level = 7;
  std::vector<std::string> parents{"before"};
  EXPECT_FALSE(protocol.GetLinkFrom(3, first, second, enabled, level));
  EXPECT_EQ(first + second, "");
  EXPECT_EQ(std::pair(enabled, level), std::pair(0, 0));
  EXPECT_FALSE(protocol.GetLinkFrom2("none", first, enabled, level));
  EXPECT_FALSE(protocol.EnableLinkFrom("none", 1));
  EXPECT_FALSE(protocol.SetLevelLinkFrom("none", 1, 2));
  EXPECT_FALSE(protocol.DeleteLinkFrom("none"));
  EXPECT_FALSE(protocol.GetLinkFromParentList(3, parents));
  EXPECT_EQ(parents, Messages());
  EXPECT_FALSE(protocol.GetLinkFromParentList2("none", parents));
  EXPECT_FALSE(protocol.GetLinkTo(1, first, second));
  EXPECT_FALSE(protocol.DeleteLinkTo("none", "P2"));
  EXPECT_FALSE(protocol.GetProtocol("none", first));
  EXPECT_FALSE(protocol.RemoveProtocol("none"));
  EXPECT_EQ(Reports(),
            (Messages{"Cannot read LinkFrom", "Cannot read LinkFrom", "Cannot enable LinkFrom",
                      "Cannot set LevelLinkFrom", "Cannot delete LinkFrom",
                      "Cannot read LinkFrom parent list no. 3.",
                      "Cannot read LinkFrom parent list none.", "Cannot read LinkTo",
                      "Cannot delete LinkTo", "Cannot get protocol", "Cannot remove protocol"}));
}

TEST_F(LinksTest, OutgoingLinksAreListedAndDeleted) {
  const std::string child = Stored();
  VXProtocol protocol(context, Stored());
  EXPECT_EQ(protocol.GetLinksToCount(), 0);
  EXPECT_TRUE(protocol.SetLinkTo("NewView", child));
  ASSERT_EQ(protocol.GetLinksToCount(), 1);
  std::string name;
  std::string id;
  EXPECT_TRUE(protocol.GetLinkTo(1, name, id));
  EXPECT_EQ(name + id, "NewView" + child);
  EXPECT_TRUE(protocol.DeleteLinkTo("NewView", child));
  EXPECT_EQ(protocol.GetLinksToCount(), 0);
}

// The saved order counts whenever it is as long as the list of members.
TEST_F(LinksTest, MembersComeInTheSavedOrder) {
  VXProtocol group(context, Stored());
  for (const char* id : {"A", "B", "C"}) EXPECT_TRUE(group.PutProtocol(id, id));
  const std::string groupId = group.GetProtocolID();
  std::vector<std::string> members;
  const auto membersWith = [&](const char* order) {
    group.PutKeyWord("SuperProtocolOrder", "Order", order);
    EXPECT_TRUE(group.GetProtocolList(members));
    return members;
  };
  EXPECT_TRUE(group.GetProtocolList(members));
  EXPECT_EQ(members, (Messages{"A", "B", "C"}));
  EXPECT_EQ(membersWith("C;A;B"), (Messages{"C", "A", "B"}));
  EXPECT_EQ(membersWith("C;A"), (Messages{"A", "B", "C"}));
  group.SetSuperProtocolOrder("B;C;A");
  EXPECT_TRUE(group.Close());
  EXPECT_TRUE(group.Open(groupId));
  EXPECT_TRUE(group.GetProtocolList(members));
  EXPECT_EQ(members, (Messages{"B", "C", "A"}));
  short count = 0;
  int answer = 0;
  EXPECT_TRUE(group.RemoveProtocol("B"));
  EXPECT_TRUE(group.GetProtocolCount(count));
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(group.IsSuperProtocol(answer));
  EXPECT_NE(answer, 0);
}

}  // namespace
}  // namespace quillmar
