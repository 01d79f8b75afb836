// What the set gives a caller that keeps to the contract.
#include "selftest/StrictSet.h"

namespace quillmar::strict {
namespace {

class Storage : public StrictSet {
 protected:
  ~Storage() override { EXPECT_THAT(Violations(), testing::IsEmpty()); }

  std::string KeyWord(const std::string& id, const char* section, const char* keyword) {
    std::string value = Blanks();
    return com.Com_GetKeyWord(id.c_str(), section, keyword, value.data()) != 0 ? value.c_str()
                                                                               : "(none)";
  }
};

TEST_F(Storage, GivesNewProtocolsTheLongestIdentifiers) {
  const std::string first = NewProtocol();
  const std::string second = NewProtocol();
  EXPECT_EQ(first.size(), 25u);
  EXPECT_NE(first, second);
  EXPECT_EQ(com.Com_IsProtocolExists(first.c_str()), QM_PROTOCOL_OPEN);
}

TEST_F(Storage, ResultsCarryGarbageAboveTheirSixteenBits) {
  using WideResult = int(QM_STDCALL*)(const char*);
  const auto close = reinterpret_cast<WideResult>(StorageFunction("Com_CloseProtocol"));
  const std::string id = NewProtocol();
  const int success = close(id.c_str());
  const int failure = close(id.c_str());
  EXPECT_EQ(static_cast<short>(success), 1);
  EXPECT_EQ(static_cast<short>(failure), 0);
  EXPECT_NE(success, 1);
  EXPECT_NE(failure, 0);
  EXPECT_EQ(link.Link_GetLinksFromCount(id.c_str()), 0) << "counts are 32 bits wide";
}

TEST_F(Storage, NamesDifferByCaseAndNothingStandsInTwoPlaces) {
  const std::string id = NewProtocol();
  ASSERT_NE(com.Com_PutKeyWord(id.c_str(), "Cadx", "Recalc", "1"), 0);
  ASSERT_NE(com.Com_PutGlobalData(id.c_str(), "Standard", "ISO"), 0);
  ASSERT_NE(com.Com_PutDataParam(id.c_str(), "mass", "2.5", "kg"), 0);
  ASSERT_NE(link.Link_SetLinkFrom(id.c_str(), "NewView", "P1@NewView"), 0);
  EXPECT_EQ(KeyWord(id, "Cadx", "Recalc"), "1");
  EXPECT_EQ(KeyWord(id, "Cadx", "recalc"), "(none)");
  EXPECT_EQ(KeyWord(id, "cadx", "Recalc"), "(none)");
  EXPECT_EQ(KeyWord(id, "Globals", "Standard"), "(none)");
  EXPECT_EQ(KeyWord(id, "Data", "mass"), "(none)");
  EXPECT_EQ(KeyWord(id, "LinksFrom", "NewView"), "(none)");
  std::string standard = Blanks();
  EXPECT_EQ(com.Com_GetStandard(id.c_str(), standard.data()), 0);
  EXPECT_EQ(standard, Blanks()) << "a failed read leaves the blanks";
}

TEST_F(Storage, LongValuesAreCutAtTheBlanksAndTheRestIsScribbledOver) {
  const std::string id = NewProtocol();
  com.Com_PutGlobalData(id.c_str(), "Long", std::string(1500, 'x').c_str());
  com.Com_PutGlobalData(id.c_str(), "Short", "y");
  std::string value = Blanks();
  ASSERT_NE(com.Com_GetGlobalData(id.c_str(), "Long", value.data()), 0);
  EXPECT_EQ(value, std::string(1024, 'x'));
  value = Blanks(2048);
  ASSERT_NE(com.Com_GetGlobalData(id.c_str(), "Long", value.data()), 0);
  EXPECT_EQ(std::string(value.c_str()), std::string(1500, 'x'));
  value = Blanks();
  ASSERT_NE(com.Com_GetGlobalData(id.c_str(), "Short", value.data()), 0);
  EXPECT_EQ(value.substr(0, 2), std::string("y\0", 2));
  EXPECT_EQ(value.find(' '), std::string::npos);
}

TEST_F(Storage, TheBufferCarriesTheRecordAndForeignItems) {
  const std::string id = NewProtocol();
  com.Com_PutKeyWord(id.c_str(), "Main", "DataFile", "KEELDATA|<@EL>%;\n");
  com.Com_PutGlobalData(id.c_str(), "TypeOfPart", "9");
  com.Com_PutModelID(id.c_str(), "Model");
  com.Com_PutDataParam(id.c_str(), "d|1", "20", "mm");
  com.Com_PutProtocol(id.c_str(), "Member", "P2");
  QmStringList* list = nullptr;
  ASSERT_NE(com.Com_GetBuffer(id.c_str(), &list), 0);
  std::vector<std::string> items;
  for (std::string_view text : TextsOf(list)) items.emplace_back(text);
  EXPECT_THAT(items, testing::Each(testing::Not(testing::HasSubstr("<@EL>"))));
  items.push_back("foreign");

  const std::string copy = NewProtocol();
  StringList given(std::vector<std::string_view>(items.begin(), items.end()));
  ASSERT_NE(com.Com_PutBuffer(copy.c_str(), given.Get()), 0);
  EXPECT_EQ(KeyWord(copy, "Main", "DataFile"), "KEELDATA|<@EL>%;\n");
  std::string value = Blanks();
  std::string unit = Blanks();
  EXPECT_NE(com.Com_GetDataParam(copy.c_str(), "d|1", value.data(), unit.data()), 0);
  EXPECT_STREQ(unit.c_str(), "mm");
  QmStringList* again = nullptr;
  ASSERT_NE(com.Com_GetBuffer(copy.c_str(), &again), 0);
  EXPECT_EQ(again->count, static_cast<int>(items.size()));
  EXPECT_EQ(TextsOf(again).back(), "foreign");
}

TEST_F(Storage, IncomingLinksAreReadWithTheShortArgumentLists) {
  using LinkFrom = short(QM_STDCALL*)(const char*, int, char*, char*);
  using LinkFrom2 = short(QM_STDCALL*)(const char*, const char*, char*);
  const std::string id = NewProtocol();
  link.Link_SetLinkFrom(id.c_str(), "d1", "#D2/2");
  link.Link_SetLinkFrom(id.c_str(), "NewView", "P7@NewView");
  std::string first = Blanks();
  std::string second = Blanks();
  const auto byIndex = reinterpret_cast<LinkFrom>(LinkFunction("Link_GetLinkFrom"));
  ASSERT_NE(byIndex(id.c_str(), 2, first.data(), second.data()), 0);
  EXPECT_STREQ(first.c_str(), "NewView");
  EXPECT_STREQ(second.c_str(), "P7@NewView");
  const auto byName = reinterpret_cast<LinkFrom2>(LinkFunction("Link_GetLinkFrom2"));
  second = Blanks();
  ASSERT_NE(byName(id.c_str(), "d1", second.data()), 0);
  EXPECT_STREQ(second.c_str(), "#D2/2");
  second = Blanks();
  ASSERT_NE(link.Link_GetParentsList(id.c_str(), second.data()), 0);
  EXPECT_STREQ(second.c_str(), "P7");
}

}  // namespace
}  // namespace quillmar::strict
