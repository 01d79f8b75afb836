#include "base/RegistryKey.h"

#include <gtest/gtest.h>

#include "support/TestMachine.h"

namespace quillmar {
namespace {

using platform::Hive;
using platform::RegistryType;

class RegistryKeyTest : public ::testing::Test {
 protected:
  RegistryKey Key(Hive hive) {
    RegistryKey key;
    EXPECT_TRUE(key.Create(hive, machine.RegistryPath()));
    return key;
  }

  TestMachine machine;
};

TEST_F(RegistryKeyTest, OpensOnlyWhatExistsWithOrWithoutALeadingBackslash) {
  RegistryKey key;
  EXPECT_FALSE(key.Open(Hive::CurrentUser, machine.RegistryPath()));
  EXPECT_TRUE(key.Create(Hive::CurrentUser, "\\" + machine.RegistryPath() + "\\Below"));
  EXPECT_TRUE(key.WriteString("Name", "value"));
  EXPECT_TRUE(key.Open(Hive::CurrentUser, machine.RegistryPath() + "\\below"));
  EXPECT_EQ(key.ReadString("NAME"), "value");
  EXPECT_TRUE(key.Close());
  EXPECT_TRUE(key.Close());
  EXPECT_EQ(key.ReadString("Name"), "");
  EXPECT_FALSE(key.WriteString("Name", "value"));
}

TEST_F(RegistryKeyTest, ValuesOfAnotherTypeOrLengthAreNotRead) {
  RegistryKey key = Key(Hive::CurrentUser);
  key.SetValue("Text", RegistryType::Text, "12");
  key.SetValue("Short", RegistryType::Dword, std::string("\x07\x01", 2));
  key.SetValue("Long", RegistryType::Text, std::string(3000, 'x'));
  key.SetValue("Inner", RegistryType::Text, std::string("ab\0cd", 5));
  key.WriteDword("Number", 0xFFFFFFFF);

  std::uint32_t number = 99;
  EXPECT_FALSE(key.ReadDword("Text", number));
  EXPECT_EQ(number, 99u);
  EXPECT_EQ(key.ReadDword("Text"), 0u);
  EXPECT_EQ(key.ReadDword("Short"), 0x0107u);
  EXPECT_EQ(key.ReadDword("Number"), 0xFFFFFFFFu);
  std::string text = "before";
  EXPECT_FALSE(key.ReadString("Number", text));
  EXPECT_EQ(text, "");
  EXPECT_FALSE(key.ReadString("Long", text));
  EXPECT_EQ(key.ReadString("Inner"), "ab");
  EXPECT_FALSE(key.QueryValue("Text", RegistryType::Dword));
  EXPECT_FALSE(key.QueryValue("Missing", RegistryType::Text));
}

TEST_F(RegistryKeyTest, TheUserComesBeforeTheMachine) {
  RegistryKey user = Key(Hive::CurrentUser);
  RegistryKey all = Key(Hive::LocalMachine);
  all.WriteString("Both", "machine");
  all.WriteString("OnlyMachine", "machine");
  all.WriteDword("Number", 1);
  all.WriteDword("Flag", 1);
  user.WriteString("Both", "");
  user.WriteString("Number", "of another type");
  user.WriteDword("Flag", 0x80000000);  // negative: not greater than 0

  const std::string& path = machine.RegistryPath();
  std::string text = "before";
  EXPECT_TRUE(RegistryKey::ReadStringUserThenMachine(path, "Both", text));
  EXPECT_EQ(text, "");
  EXPECT_TRUE(RegistryKey::ReadStringUserThenMachine(path, "OnlyMachine", text));
  EXPECT_EQ(text, "machine");
  EXPECT_FALSE(RegistryKey::ReadStringUserThenMachine(path, "Missing", text));
  std::uint32_t number = 0;
  EXPECT_TRUE(RegistryKey::ReadDwordUserThenMachine(path, "Number", number));
  EXPECT_EQ(number, 1u);
  bool flag = true;
  EXPECT_TRUE(RegistryKey::ReadFlagUserThenMachine(path, "Flag", flag));
  EXPECT_FALSE(flag);
}

TEST_F(RegistryKeyTest, DeletingAKeyEmptiesItToItsDepth) {
  RegistryKey key = Key(Hive::CurrentUser);
  key.WriteString("", "default");
  key.WriteString("One", "1");
  RegistryKey deep;
  ASSERT_TRUE(deep.Create(Hive::CurrentUser, machine.RegistryPath() + "\\A\\B\\C"));
  deep.WriteDword("Two", 2);
  deep.Close();
  EXPECT_TRUE(key.DeleteKey());
  EXPECT_FALSE(key.EnumKey(0));
  EXPECT_FALSE(key.EnumValue(0));
  EXPECT_FALSE(deep.Open(Hive::CurrentUser, machine.RegistryPath() + "\\A"));
}

}  // namespace
}  // namespace quillmar
