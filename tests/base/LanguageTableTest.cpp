#include "base/LanguageTable.h"

#include <gtest/gtest.h>

#include "support/TestMachine.h"

namespace quillmar {
namespace {

class LanguageTableTest : public ::testing::Test {
 protected:
  bool Load(const std::string& bytes, const std::string& language) {
    machine.WriteFile(machine.InFolder("Quillmar.lng"), bytes);
    return table.Load(machine.InFolder("Quillmar.lng"), language);
  }

  TestMachine machine;
  LanguageTable table;
};

TEST_F(LanguageTableTest, TextsOfTheChosenLanguage) {
  ASSERT_TRUE(
      Load("[1]\r\nEN=Options\r\nDE=~\r\n"
           "[2]\r\nEN=Shaft\r\n"
           "[4]\r\nDE=Line one\\nLine two\r\n"
           "[title]\r\nDE=not a number\r\n"
           "[6]\r\nDE=~\r\n",
           "DE"));
  EXPECT_EQ(table.GetText(1), "Options");
  EXPECT_EQ(table.GetText(2), "Message not found");
  EXPECT_EQ(table.GetText(3), "");
  EXPECT_EQ(table.GetText(4), "Line one\nLine two");
  EXPECT_EQ(table.GetText(0), "not a number");
  EXPECT_EQ(table.GetText(6), "");
  EXPECT_EQ(table.GetText(-1), "");
  EXPECT_EQ(table.GetText(7000), "");
}

TEST_F(LanguageTableTest, UnreadableFilesLeaveTheTableEmpty) {
  EXPECT_FALSE(table.Load(machine.InFolder("missing.lng"), "EN"));
  EXPECT_FALSE(Load("", "EN"));
  EXPECT_FALSE(Load("EN=without a section\r\n", "EN"));
  EXPECT_EQ(table.GetText(1), "");
}

// The list of section names holds 2048 characters; what does not fit is not loaded.
TEST_F(LanguageTableTest, SectionsBeyondTheListAreNotLoaded) {
  std::string file;
  for (int i = 1000; i < 1500; ++i) {
    file += "[" + std::to_string(i) + "]\r\nEN=Text " + std::to_string(i) + "\r\n";
  }
  ASSERT_TRUE(Load(file, "EN"));
  EXPECT_EQ(table.GetText(1000), "Text 1000");
  EXPECT_EQ(table.GetText(1408), "Text 1408");  // 409 names of 5 bytes fit into 2046
  EXPECT_EQ(table.GetText(1409), "");
}

TEST_F(LanguageTableTest, ALargeNumberTakesNoMemory) {
  ASSERT_TRUE(Load("[2000000000]\r\nEN=far away\r\n[-5]\r\nEN=before\r\n[1]\r\nEN=near\r\n", "EN"));
  EXPECT_EQ(table.GetText(1), "near");
  EXPECT_EQ(table.GetText(2000000000), "far away");
  EXPECT_EQ(table.GetText(-5), "");
}

}  // namespace
}  // namespace quillmar
