// Opening, closing, erasing and copying protocols; what is there in the next session.
#include <sqlite3.h>

#include <set>

#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

using LifetimeTest = StoreFixture;

TEST_F(LifetimeTest, NewProtocolsGetIdentifiersOfTheirOwn) {
  std::set<std::string> ids;
  for (int i = 0; i < 200; ++i) ids.insert(suite.OpenNew());
  EXPECT_EQ(ids.size(), 200u);
  EXPECT_EQ(ids.count(""), 0u);
  for (const std::string& id : ids) EXPECT_LE(id.size(), 25u);
}

TEST_F(LifetimeTest, IdentifiersHaveOneTo25Characters) {
  const struct {
    std::string id;
    bool opens;
  } cases[] = {{"P", true},
               {std::string(25, 'P'), true},
               {std::string(26, 'P'), false},
               {std::string(200, 'P'), false},
               {"", false},
               {std::string(24, ' '), false},
               {"A b\xB3;", true}};
  for (const auto& one : cases) {
    EXPECT_EQ(suite.Open(one.id), one.opens) << one.id;
    EXPECT_EQ(State(one.id), one.opens ? QM_PROTOCOL_OPEN : QM_PROTOCOL_MISSING) << one.id;
  }
}

TEST_F(LifetimeTest, OneCloseClosesHoweverOftenItWasOpened) {
  EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
  EXPECT_FALSE(suite.Close("P1"));
  EXPECT_TRUE(suite.Open("P1"));
  EXPECT_TRUE(suite.Open("P1"));
  EXPECT_EQ(State("P1"), QM_PROTOCOL_OPEN);
  EXPECT_TRUE(suite.Close("P1"));
  EXPECT_EQ(State("P1"), QM_PROTOCOL_CLOSED);
  EXPECT_FALSE(suite.Close("P1"));
}

TEST_F(LifetimeTest, ErasedIsGoneWhetherOpenOrClosed) {
  EXPECT_EQ(suite.storage.Com_EraseProtocol("P1"), 0);
  for (const bool closeFirst : {false, true}) {
    ASSERT_TRUE(suite.Open("P1"));
    ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "GEAR1"));
    if (closeFirst) {
      ASSERT_TRUE(suite.Close("P1"));
    }
    EXPECT_NE(suite.storage.Com_EraseProtocol("P1"), 0);
    EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
    ASSERT_TRUE(suite.Open("P1"));
    EXPECT_EQ(suite.Get("P1", "Main", "DataFile"), std::nullopt);
  }
}

int CountRows(const std::filesystem::path& database, const std::string& table) {
  sqlite3* connection = nullptr;
  sqlite3_stmt* count = nullptr;
  sqlite3_open(database.string().c_str(), &connection);
  sqlite3_prepare_v2(connection, ("SELECT count(*) FROM " + table).c_str(), -1, &count, nullptr);
  const int rows = sqlite3_step(count) == SQLITE_ROW ? sqlite3_column_int(count, 0) : -1;
  sqlite3_finalize(count);
  sqlite3_close(connection);
  return rows;
}

TEST_F(LifetimeTest, AnErasedProtocolLeavesNoRows) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "Globals", "OwnerHWND", "7"));
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "Globals", "OwnerHWND", "7"));
  for (const int rows : {1, 0}) {
    for (const char* table : {"protocols", "texts", "owners"}) {
      EXPECT_EQ(CountRows(DatabaseFile(), table), rows) << table;
    }
    suite.storage.Com_EraseProtocol("P1");
  }
}

TEST_F(LifetimeTest, AClosedProtocolTakesNoCalls) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "GEAR1"));
  ASSERT_TRUE(suite.Close("P1"));
  int number = 0;
  short count = 0;
  Growing text;
  EXPECT_FALSE(suite.Put("P1", "Main", "DataFile", "GEAR2"));
  EXPECT_EQ(suite.Get("P1", "Main", "DataFile"), std::nullopt);
  EXPECT_EQ(suite.KeyList("P1", "Main"), std::nullopt);
  EXPECT_EQ(suite.storage.Com_GetVersion("P1", &number, &number), 0);
  EXPECT_EQ(suite.storage.Com_SetVersion("P1", 1, 0), 0);
  EXPECT_EQ(suite.storage.Com_GetDataCount("P1", &count), 0);
  EXPECT_EQ(suite.storage.Com_GetModelID("P1", text), 0);
  EXPECT_FALSE(suite.PutBuffer("P1", {"a"}));
  EXPECT_TRUE(suite.Buffer("P1").empty());
}

TEST_F(LifetimeTest, TheNextSessionFindsWhatWasClosed) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "Zeta", "second", "2"));
  ASSERT_TRUE(suite.Put("P1", "Alpha", "Kappa", "first spelling"));
  ASSERT_TRUE(suite.Put("P1", "Zeta", "First", ""));
  ASSERT_TRUE(suite.Put("P1", "ALPHA", "KAPPA", "changed"));
  ASSERT_NE(suite.storage.Com_PutDataParam("P1", "mass", "0.25", "kg"), 0);
  ASSERT_NE(suite.storage.Com_SetVersion("P1", 1, 3), 0);
  const auto before = suite.Buffer("P1");
  ASSERT_TRUE(suite.Close("P1"));
  ASSERT_TRUE(suite.Open("P2"));
  ASSERT_TRUE(suite.Put("P2", "Main", "DataFile", "never closed"));

  suite.Reload();
  EXPECT_EQ(State("P2"), QM_PROTOCOL_MISSING);
  EXPECT_EQ(State("P1"), QM_PROTOCOL_CLOSED);
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.Buffer("P1"), before);
  EXPECT_EQ(suite.KeyList("P1", "zeta"), "second;First");
  EXPECT_EQ(suite.KeyList("P1", "alpha"), "Kappa");
  EXPECT_EQ(suite.Get("P1", "alpha", "kappa"), "changed");
  int major = 0;
  int minor = 0;
  ASSERT_NE(suite.storage.Com_GetVersion("P1", &major, &minor), 0);
  EXPECT_EQ(major, 1);
  EXPECT_EQ(minor, 3);

  // Erased and written again, a keyword stands last, then and in the session after.
  ASSERT_TRUE(suite.Put("P1", "Zeta", "second", nullptr));
  ASSERT_TRUE(suite.Put("P1", "Zeta", "second", "3"));
  ASSERT_NE(suite.storage.Com_EraseSection("P1", "Alpha"), 0);
  ASSERT_TRUE(suite.Close("P1"));
  suite.Reload();
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.KeyList("P1", "Zeta"), "First;second");
  EXPECT_EQ(suite.KeyList("P1", "Alpha"), "");
}

TEST_F(LifetimeTest, ANewProtocolHasTheCurrentVersion) {
  int major = 0;
  int minor = 7;
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_NE(suite.storage.Com_GetVersion("P1", &major, &minor), 0);
  EXPECT_EQ(major, 2);
  EXPECT_EQ(minor, 0);
}

TEST_F(LifetimeTest, ACopyIsOpenAndHoldsWhatItsSourceHolds) {
  for (const bool closeFirst : {false, true}) {
    ASSERT_TRUE(suite.Open("P1"));
    ASSERT_TRUE(suite.Put("P1", "Main", "DataFile", "GEAR1"));
    ASSERT_NE(suite.storage.Com_PutViewKey("P1", "MODELA"), 0);
    ASSERT_TRUE(suite.PutBuffer("P1", suite.Buffer("P1")));
    const auto contents = suite.Buffer("P1");
    if (closeFirst) {
      ASSERT_TRUE(suite.Close("P1"));
    }

    std::string id(QM_NEW_PROTOCOL_BLANKS, ' ');
    id.resize(QM_PROTOCOL_ID_BUFFER);
    ASSERT_NE(suite.storage.Com_CopyProtocol("P1", id.data()), 0);
    id = id.c_str();
    EXPECT_NE(id, "P1");
    EXPECT_EQ(State(id), QM_PROTOCOL_OPEN);
    EXPECT_EQ(State("P1"), closeFirst ? QM_PROTOCOL_CLOSED : QM_PROTOCOL_OPEN);
    EXPECT_EQ(suite.Buffer(id), contents);
    ASSERT_TRUE(suite.Put(id, "Main", "DataFile", "GEAR2"));
    ASSERT_TRUE(suite.Close(id));
    ASSERT_TRUE(suite.Open("P1"));
    EXPECT_EQ(suite.Get("P1", "Main", "DataFile"), "GEAR1");
  }
}

TEST_F(LifetimeTest, ACopyNeedsASourceAndTheBlanks) {
  std::string blanks(QM_NEW_PROTOCOL_BLANKS, ' ');
  blanks.resize(QM_PROTOCOL_ID_BUFFER);
  EXPECT_EQ(suite.storage.Com_CopyProtocol("missing", blanks.data()), 0);
  ASSERT_TRUE(suite.Open("P1"));
  std::string name = "P2";
  name.resize(QM_PROTOCOL_ID_BUFFER);
  EXPECT_EQ(suite.storage.Com_CopyProtocol("P1", name.data()), 0);
}

TEST_F(LifetimeTest, NullArgumentsFail) {
  ASSERT_TRUE(suite.Open("P1"));
  const StorageTable& storage = suite.storage;
  const struct {
    const char* what;
    short result;
  } cases[] = {
      {"open", storage.Com_OpenProtocol(nullptr)},
      {"close", storage.Com_CloseProtocol(nullptr)},
      {"erase", storage.Com_EraseProtocol(nullptr)},
      {"exists", storage.Com_IsProtocolExists(nullptr)},
      {"copy", storage.Com_CopyProtocol("P1", nullptr)},
      {"version", storage.Com_GetVersion("P1", nullptr, nullptr)},
      {"owner", storage.Com_GetOwnerHWND("P1", nullptr)},
      {"get buffer", storage.Com_GetBuffer("P1", nullptr)},
      {"put buffer", storage.Com_PutBuffer("P1", nullptr)},
      {"get section", storage.Com_GetKeyWord("P1", nullptr, "a", nullptr)},
      {"put section", storage.Com_PutKeyWord("P1", nullptr, "a", "b")},
      {"put keyword", storage.Com_PutKeyWord("P1", "a", nullptr, "b")},
      {"list", storage.Com_GetKeyList("P1", nullptr, nullptr)},
      {"model", storage.Com_PutModelID("P1", nullptr)},
      {"get model", storage.Com_GetModelID("P1", nullptr)},
      {"data", storage.Com_PutDataParam("P1", "a", nullptr, "mm")},
      {"data name", storage.Com_PutDataParam("P1", nullptr, "1", "mm")},
      {"count", storage.Com_GetDataCount("P1", nullptr)},
      {"super", storage.Com_IsSuperProtocol("P1", nullptr)},
      {"member", storage.Com_PutProtocol("P1", "P2", nullptr)},
      {"members", storage.Com_GetProtocolList("P1", nullptr)},
  };
  for (const auto& one : cases) EXPECT_EQ(one.result, 0) << one.what;
}

}  // namespace
}  // namespace quillmar::test
