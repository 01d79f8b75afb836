// Databases that cannot be used: every call fails with a message, and the process goes on.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <thread>

#include "companions/StoreFixture.h"

namespace quillmar::test {
namespace {

class BadDatabaseTest : public StoreFixture {
 protected:
  // A store with protocol P1 in it, of which nobody is a user now.
  BadDatabaseTest() {
    suite.Open("P1");
    for (int i = 0; i < 500; ++i) {
      suite.Put("P1", "S", ("k" + std::to_string(i)).c_str(), "0123456789012345678901234567890");
    }
    suite.Close("P1");
    suite.Reload();
  }

  void Overwrite(std::streamoff place, const std::string& bytes) const {
    std::fstream file(DatabaseFile(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(place);
    file << bytes;
  }

  // All but the first, which says that this is a database.
  void DamagePages() const {
    const auto size = static_cast<std::streamoff>(std::filesystem::file_size(DatabaseFile()));
    for (std::streamoff page = 4096; page < size; page += 4096) {
      Overwrite(page, std::string(4096, '\xFF'));
    }
  }

  void ExpectNothingWorks() const {
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(suite.Open("P1"));
    EXPECT_FALSE(suite.Open("New"));
    EXPECT_EQ(suite.OpenNew(), "");
    EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
    EXPECT_EQ(suite.storage.Com_EraseProtocol("P1"), 0);
    const std::string messages = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(messages.begin(), messages.end(), '\n'), 5) << messages;
    EXPECT_EQ(messages.find("Keelcomm: "), 0u) << messages;
  }
};

TEST_F(BadDatabaseTest, AFileThatIsNoDatabase) {
  Overwrite(0, "This is no database, whatever its name says.");
  ExpectNothingWorks();
}

TEST_F(BadDatabaseTest, ADatabaseOfAnotherMaker) {
  Overwrite(60, std::string("\0\0\0\x63", 4));  // the layout's number
  ExpectNothingWorks();
}

TEST_F(BadDatabaseTest, DamagedPages) {
  DamagePages();
  EXPECT_FALSE(suite.Open("P1"));
  EXPECT_EQ(suite.storage.Com_EraseProtocol("P1"), 0);
  EXPECT_EQ(State("P1"), QM_PROTOCOL_MISSING);
}

TEST_F(BadDatabaseTest, WhatIsOpenStaysOpenInADamagedDatabase) {
  ASSERT_TRUE(suite.Open("P1"));
  DamagePages();
  EXPECT_EQ(State("P1"), QM_PROTOCOL_OPEN);
  EXPECT_TRUE(suite.Get("P1", "S", "k499").has_value());
}

TEST_F(BadDatabaseTest, AFolderThatIsNotThere) {
  Suite other(InstallSuite(machine, "Other", "[Store]\nDatabase=missing\\folder\\p.db\n"));
  EXPECT_FALSE(other.Open("P1"));
  EXPECT_EQ(other.OpenNew(), "");
}

TEST_F(BadDatabaseTest, ALockedDatabaseKeepsWhatIsOpen) {
  ASSERT_TRUE(suite.Open("P1"));
  ASSERT_TRUE(suite.Put("P1", "S", "k0", "changed"));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(DatabaseFile().string().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_FALSE(suite.Close("P1"));
  EXPECT_EQ(suite.storage.Com_EraseProtocol("P1"), 0);
  EXPECT_EQ(State("P1"), QM_PROTOCOL_OPEN);
  EXPECT_EQ(suite.Get("P1", "S", "k0"), "changed");
  // Reading needs no lock.
  EXPECT_TRUE(suite.Open("P2"));
  sqlite3_close(other);

  EXPECT_TRUE(suite.Close("P1"));
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_EQ(suite.Get("P1", "S", "k0"), "changed");
}

TEST_F(BadDatabaseTest, AShortLockIsWaitedFor) {
  Suite patient(InstallSuite(machine, "Patient", "[Store]\nDatabase=..\\Suite\\Protocols.db\n"));
  ASSERT_TRUE(patient.Open("P2"));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(DatabaseFile().string().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  std::thread unlock([other] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    sqlite3_close(other);
  });
  EXPECT_TRUE(patient.Close("P2"));
  unlock.join();
  EXPECT_EQ(State("P2"), QM_PROTOCOL_CLOSED);
}

TEST_F(BadDatabaseTest, AnExclusivelyLockedDatabase) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(DatabaseFile().string().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  ExpectNothingWorks();
  sqlite3_close(other);
  EXPECT_TRUE(suite.Open("P1"));
}

TEST_F(BadDatabaseTest, AReadOnlyDatabaseCanBeReadAndNotWritten) {
  // A newer write format makes the database read-only for everybody, the administrator included.
  Overwrite(18, "\x03");
  ASSERT_TRUE(suite.Open("P1"));
  EXPECT_TRUE(suite.Get("P1", "S", "k0").has_value());
  EXPECT_FALSE(suite.Put("P1", "S", "k0", "changed"));
  EXPECT_EQ(suite.storage.Com_SetVersion("P1", 1, 0), 0);
  EXPECT_EQ(suite.storage.Com_PutDataParam("P1", "d", "1", "mm"), 0);
  EXPECT_EQ(suite.links.Link_SetLinkFrom("P1", "a", "b"), 0);
  EXPECT_FALSE(suite.PutBuffer("P1", {"a"}));
  EXPECT_EQ(suite.Get("P1", "S", "k0"), "0123456789012345678901234567890");
  EXPECT_FALSE(suite.Open("New"));
  EXPECT_EQ(suite.storage.Com_EraseProtocol("P1"), 0);
  EXPECT_TRUE(suite.Close("P1"));
}

}  // namespace
}  // namespace quillmar::test
