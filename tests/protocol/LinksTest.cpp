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
  Reports();
  EXPECT_FALSE(protocol.GetLinkFrom(3, first, second, enabled, level));
  EXPECT_EQ(Reports(), Messages{"Cannot read LinkFrom"});
  EXPECT_TRUE(protocol.DeleteLinkFrom("width"));
  EXPECT_EQ(protocol.GetLinksFromCount(true), 1);
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
