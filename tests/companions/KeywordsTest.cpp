// Sections, keywords, data parameters and the other texts of an open protocol.
#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

class KeywordsTest : public StoreFixture {
 protected:
  KeywordsTest() { suite.Open("P1"); }
};

TEST_F(KeywordsTest, GrowingOutputsHoldWhatTheBlanksMakeRoomFor) {
  const struct {
    std::size_t length;    // of the value
    std::size_t capacity;  // blanks
    std::size_t written;
  } cases[] = {{0, 1024, 0},       {5, 1024, 5},       {1022, 1024, 1022},
               {1023, 1024, 1023}, {1024, 1024, 1024}, {1025, 1024, 1024},
               {5000, 1024, 1024}, {5000, 6144, 5000}, {3, 0, 0}};
  for (const auto& one : cases) {
    const std::string value(one.length, 'v');
    ASSERT_TRUE(suite.Put("P1", "S", "k", value.c_str()));
    // A byte beyond the NUL must stay as it is.
    std::string buffer(one.capacity, ' ');
    buffer += '\0';
    buffer += '#';
    EXPECT_NE(suite.storage.Com_GetKeyWord("P1", "S", "k", buffer.data()), 0);
    EXPECT_EQ(std::string(buffer.c_str()), value.substr(0, one.written)) << one.length;
    EXPECT_EQ(buffer.back(), '#') << one.length;
  }
}

TEST_F(KeywordsTest, NamesMatchWithoutRegardToCaseAndKeepTheirFirstSpelling) {
  ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "a"));
  ASSERT_TRUE(suite.Put("P1", "MAIN", "datafile", "b"));
  ASSERT_TRUE(suite.Put("P1", "main", "\xB3od\x9F", "c"));  // Polish letters of code page 1250
  EXPECT_EQ(suite.Get("P1", "mAiN", "DATAFILE"), "b");
  EXPECT_EQ(suite.Get("P1", "main", "\xA3OD\x8F"), "c");
  EXPECT_EQ(suite.KeyList("P1", "main"), "DataFile;\xB3od\x9F");
  EXPECT_EQ(suite.storage.Com_GetKeyList("P1", "MAIN", nullptr), 2);
}

TEST_F(KeywordsTest, KeywordsAreListedInTheOrderOfTheirFirstWriting) {
  for (const char* name : {"c", "a", "d", "b"}) ASSERT_TRUE(suite.Put("P1", "S", name, name));
  ASSERT_TRUE(suite.Put("P1", "S", "a", "again"));
  EXPECT_EQ(suite.KeyList("P1", "S"), "c;a;d;b");
  ASSERT_TRUE(suite.Put("P1", "S", "d", nullptr));
  EXPECT_EQ(suite.KeyList("P1", "S"), "c;a;b");
  EXPECT_EQ(suite.Get("P1", "S", "d"), std::nullopt);
  ASSERT_NE(suite.storage.Com_EraseSection("P1", "s"), 0);
  EXPECT_EQ(suite.KeyList("P1", "S"), "");
  EXPECT_EQ(suite.storage.Com_GetKeyList("P1", "S", nullptr), 0);
}

TEST_F(KeywordsTest, ASectionGoesWithItsLastKeyword) {
  ASSERT_TRUE(suite.Put("P1", "S", "k", "v"));
  ASSERT_TRUE(suite.Put("P1", "S", "k", nullptr));
  EXPECT_TRUE(suite.Buffer("P1").empty());
  ASSERT_TRUE(suite.Put("P1", "s", "k", "v"));
  EXPECT_EQ(suite.Buffer("P1")[1], "KC1|K|s|k|v");
}

TEST_F(KeywordsTest, ErasingWhatIsNotThereSucceeds) {
  EXPECT_TRUE(suite.Put("P1", "S", "k", nullptr));
  EXPECT_NE(suite.storage.Com_EraseSection("P1", "S"), 0);
}

TEST_F(KeywordsTest, AnEmptyValueIsAValueAndAMissingOneIsNot) {
  ASSERT_TRUE(suite.Put("P1", "S", "k", ""));
  EXPECT_EQ(suite.Get("P1", "S", "k"), "");
  EXPECT_EQ(suite.Get("P1", "S", "other"), std::nullopt);
  EXPECT_EQ(suite.Get("P1", "other", "k"), std::nullopt);
  EXPECT_FALSE(suite.Put("P1", "", "k", "v"));
  EXPECT_FALSE(suite.Put("P1", "S", "", "v"));
}

TEST_F(KeywordsTest, GlobalDataAreTheKeywordsOfGlobals) {
  Growing value;
  ASSERT_NE(suite.storage.Com_PutGlobalData("P1", "Unit", "mm"), 0);
  EXPECT_EQ(suite.Get("P1", "Globals", "unit"), "mm");
  ASSERT_TRUE(suite.Put("P1", "Globals", "Scale", "0.5"));
  ASSERT_NE(suite.storage.Com_GetGlobalData("P1", "SCALE", value), 0);
  EXPECT_EQ(value.Text(), "0.5");
  EXPECT_EQ(suite.storage.Com_GetGlobalData("P1", "Model", Growing()), 0);
}

TEST_F(KeywordsTest, DataParametersAreTheKeywordsOfData) {
  ASSERT_NE(suite.storage.Com_PutDataParam("P1", "z1", "21", "ND"), 0);
  ASSERT_NE(suite.storage.Com_PutDataParam("P1", "mass", "0.25", "kg"), 0);
  ASSERT_NE(suite.storage.Com_PutDataParam("P1", "cas", "", ""), 0);
  ASSERT_TRUE(suite.Put("P1", "Data", "Z1", "23"));  // the unit stays
  short count = 0;
  ASSERT_NE(suite.storage.Com_GetDataCount("P1", &count), 0);
  EXPECT_EQ(count, 3);

  const struct {
    short index;
    const char* name;
    const char* value;
    const char* unit;
  } items[] = {{1, "z1", "23", "ND"}, {2, "mass", "0.25", "kg"}, {3, "cas", "", ""}};
  for (const auto& item : items) {
    Growing name, value, unit, sameValue, sameUnit;
    ASSERT_NE(suite.storage.Com_GetDataItem("P1", item.index, name, value, unit), 0);
    EXPECT_EQ(name.Text(), item.name);
    EXPECT_EQ(value.Text(), item.value);
    EXPECT_EQ(unit.Text(), item.unit);
    ASSERT_NE(suite.storage.Com_GetDataParam("P1", item.name, sameValue, sameUnit), 0);
    EXPECT_EQ(sameValue.Text(), item.value);
    EXPECT_EQ(sameUnit.Text(), item.unit);
  }
  Growing name, value, unit;
  for (const short index : {-1, 0, 4}) {
    EXPECT_EQ(suite.storage.Com_GetDataItem("P1", index, name, value, unit), 0) << index;
  }
  EXPECT_EQ(suite.storage.Com_GetDataParam("P1", "missing", value, unit), 0);
  ASSERT_TRUE(suite.Put("P1", "Data", "mass", nullptr));
  ASSERT_NE(suite.storage.Com_GetDataItem("P1", 2, name, value, unit), 0);
  EXPECT_EQ(name.Text(), "cas");
}

TEST_F(KeywordsTest, SingleTextsAreEmptyUntilTheyAreWritten) {
  const StorageTable& storage = suite.storage;
  const struct {
    short(QM_STDCALL* put)(const char*, const char*);
    short(QM_STDCALL* get)(const char*, char*);
    const char* text;
  } cases[] = {{storage.Com_PutModelID, storage.Com_GetModelID, "gears\\spur"},
               {storage.Com_PutPartKey, storage.Com_GetPartKey, "key 7"},
               {storage.Com_PutViewKey, storage.Com_GetViewKey, "MODELA_FM"},
               {storage.Com_PutStandard, storage.Com_GetStandard, "ISO"}};
  for (const auto& one : cases) {
    Growing text;
    EXPECT_NE(one.get("P1", text), 0);
    EXPECT_EQ(text.Text(), "");
  }
  for (const auto& one : cases) ASSERT_NE(one.put("P1", one.text), 0);
  for (const auto& one : cases) {
    Growing text;
    EXPECT_NE(one.get("P1", text), 0);
    EXPECT_EQ(text.Text(), one.text);
  }
}

TEST_F(KeywordsTest, TheDataFileIsThatOfMainElseOfFiles) {
  const auto dataFile = [this] {
    Growing name;
    EXPECT_NE(suite.storage.Com_GetDataFile("P1", name), 0);
    return name.Text();
  };
  EXPECT_EQ(dataFile(), "");
  ASSERT_TRUE(suite.Put("P1", "Files", "DataFile", "KeelData|userpart"));
  EXPECT_EQ(dataFile(), "KeelData|userpart");
  ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "GEAR1"));
  EXPECT_EQ(dataFile(), "GEAR1");
}

TEST_F(KeywordsTest, OneKeyGoesThroughTheWholeProtocol) {
  ASSERT_TRUE(suite.Put("P1", "B", "b1", "1"));
  ASSERT_TRUE(suite.Put("P1", "A", "a1", "2"));
  ASSERT_TRUE(suite.Put("P1", "B", "b2", "3"));
  std::string all;
  Growing keyword, value;
  for (short i = 1; suite.storage.Com_GetOneKey("P1", i, keyword, value) != 0; ++i) {
    all += keyword.Text() + "=" + value.Text() + " ";
    keyword = Growing();
    value = Growing();
  }
  EXPECT_EQ(all, "b1=1 b2=3 a1=2 ");
  EXPECT_EQ(suite.storage.Com_GetOneKey("P1", 0, keyword, value), 0);
}

TEST_F(KeywordsTest, ASuperProtocolIsOneThatListsMembers) {
  short answer = -1;
  ASSERT_NE(suite.storage.Com_IsSuperProtocol("P1", &answer), 0);
  EXPECT_EQ(answer, 0);
  for (const char* id : {"M1", "M2", "M3"}) {
    ASSERT_NE(suite.storage.Com_PutProtocol("P1", id, id), 0);
  }
  EXPECT_NE(suite.storage.Com_RemoveProtocol("P1", "M2"), 0);
  EXPECT_EQ(suite.storage.Com_RemoveProtocol("P1", "M2"), 0);
  ASSERT_NE(suite.storage.Com_IsSuperProtocol("P1", &answer), 0);
  EXPECT_NE(answer, 0);
  Growing list, member;
  ASSERT_NE(suite.storage.Com_GetProtocolList("P1", list), 0);
  EXPECT_EQ(list.Text(), "M1;M3;");
  short count = 0;
  ASSERT_NE(suite.storage.Com_GetProtocolCount("P1", &count), 0);
  EXPECT_EQ(count, 2);
  ASSERT_NE(suite.storage.Com_GetProtocol("P1", "m3", member), 0);
  EXPECT_EQ(member.Text(), "M3");
  EXPECT_EQ(suite.storage.Com_GetProtocol("P1", "M2", member), 0);
}

}  // namespace
}  // namespace quillmar::test
