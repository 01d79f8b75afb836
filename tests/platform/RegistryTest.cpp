// The registry. The expectations are what the Windows registry functions do; both backends are held
// to them.
#include "platform/Registry.h"

#include <gmock/gmock.h>

#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> SubKeys(const RegistryHandle& key) {
  std::vector<std::string> names;
  while (auto name = key.SubKeyAt(static_cast<std::uint32_t>(names.size()))) names.push_back(*name);
  return names;
}

std::vector<std::string> ValueNames(const RegistryHandle& key) {
  std::vector<std::string> names;
  while (auto value = key.ValueAt(static_cast<std::uint32_t>(names.size()))) {
    names.push_back(value->name);
  }
  return names;
}

class Registry : public testing::Test {
 protected:
  RegistryHandle Make(const std::string& below = "") {
    return std::move(*CreateKey(Hive::CurrentUser, machine.RegistryPath() + below));
  }
  bool Exists(const std::string& below) {
    return OpenKey(Hive::CurrentUser, machine.RegistryPath() + below).has_value();
  }

  TestMachine machine;
};

TEST_F(Registry, OpensKeysWithoutRegardToCase) {
  EXPECT_FALSE(Exists(""));
  Make("\\One\\Two\xA3");
  EXPECT_TRUE(Exists("\\one\\TWO\xB3"));
  EXPECT_TRUE(Exists("\\One\\"));
  EXPECT_FALSE(Exists("\\One\\Three"));
  EXPECT_FALSE(OpenKey(Hive::LocalMachine, machine.RegistryPath()).has_value());
  EXPECT_FALSE(OpenKey(Hive::CurrentUser, "\\" + machine.RegistryPath()).has_value());
  EXPECT_FALSE(CreateKey(Hive::CurrentUser, "\\" + machine.RegistryPath()).has_value());
  EXPECT_FALSE(CreateKey(Hive::CurrentUser, machine.RegistryPath() + "\\" + std::string(256, 'n')));
  EXPECT_THAT(SubKeys(Make("\\ONE")), ElementsAre("Two\xA3"));
}

struct ValueCase {
  const char* name;
  RegistryType type;
  std::string stored;
  std::string read;
};

TEST_F(Registry, KeepsTypesAndBytes) {
  constexpr auto list = static_cast<RegistryType>(7);
  constexpr auto unknown = static_cast<RegistryType>(77);
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  const ValueCase cases[] = {
      {"text", RegistryType::Text, "abc", "abc\0"s},
      {"closed text", RegistryType::Text, "abc\0"s, "abc\0"s},
      {"empty text", RegistryType::Text, "", "\0"s},
      {"text with NULs", RegistryType::Text, "a\0b"s, "a\0b\0"s},
      {"all bytes", RegistryType::Text, all, all + '\0'},
      {"lines", RegistryType::Text, "a\r\nb\t\"c\\", "a\r\nb\t\"c\\\0"s},
      {"expandable", RegistryType::ExpandableText, "%a%", "%a%\0"s},
      {"list", list, "a\0b\0\0"s, "a\0b\0\0"s},
      {"empty list", list, "", ""},
      {"number", RegistryType::Dword, "\x01\x02\x03\xFF", "\x01\x02\x03\xFF"},
      {"short number", RegistryType::Dword, "\x01\x02", "\x01\x02"},
      {"bytes", RegistryType::Binary, all + "\0"s, all + "\0"s},
      {"no bytes", RegistryType::Binary, "", ""},
      {"none", RegistryType::None, "x", "x"},
      {"unknown", unknown, "x", "x"},
      {"", RegistryType::Text, "default", "default\0"s},
      {"\"quoted\\name\"", RegistryType::Text, "x", "x\0"s},
      {"=;[x]", RegistryType::Text, "x", "x\0"s},
  };
  for (const ValueCase& row : cases) {
    ASSERT_TRUE(Make().Set(row.name, row.type, row.stored)) << row.name;
  }
  for (const ValueCase& row : cases) {
    std::optional<RegistryValue> value = Make().Query(row.name);
    ASSERT_TRUE(value.has_value()) << row.name;
    EXPECT_EQ(value->type, row.type) << row.name;
    EXPECT_EQ(value->data, row.read) << row.name;
  }
}

TEST_F(Registry, ReplacesValuesWithoutRegardToCase) {
  RegistryHandle key = Make();
  key.Set("Name\xA5", RegistryType::Text, "old");
  key.Set("nAME\xB9", RegistryType::Dword, "1234");
  EXPECT_EQ(key.Query("NAME\xA5")->data, "1234");
  EXPECT_THAT(ValueNames(key), ElementsAre("Name\xA5"));
  EXPECT_FALSE(key.Query("Name").has_value());
  EXPECT_FALSE(key.Set(std::string(16384, 'n'), RegistryType::Text, "x"));
  EXPECT_TRUE(key.Set(std::string(16383, 'n'), RegistryType::Text, std::string(100'000, 'x')));
  EXPECT_EQ(key.Query(std::string(16383, 'N'))->data.size(), 100'001U);
}

TEST_F(Registry, EnumeratesByIndex) {
  RegistryHandle key = Make();
  for (const char* name : {"b", "C", "", "a_", "A"}) key.Set(name, RegistryType::Text, name);
  for (const char* name : {"\\z", "\\Y", "\\x\\deep"}) Make(name);
  EXPECT_THAT(ValueNames(key), ElementsAre("", "A", "a_", "b", "C"));
  EXPECT_THAT(SubKeys(key), ElementsAre("x", "Y", "z"));
  EXPECT_EQ(key.ValueAt(4)->value.data, "C\0"s);
  EXPECT_FALSE(key.ValueAt(5).has_value());
  EXPECT_FALSE(key.SubKeyAt(0xFFFFFFFF).has_value());
}

TEST_F(Registry, DeletesWhatIsThereAndHasNothingBelow) {
  RegistryHandle key = Make();
  key.Set("v", RegistryType::Text, "x");
  Make("\\Sub\\Deep");
  Make("\\Sub").Set("v", RegistryType::Text, "x");
  EXPECT_TRUE(key.DeleteValue("V"));
  EXPECT_FALSE(key.DeleteValue("v"));
  EXPECT_FALSE(key.DeleteSubKey("absent"));
  EXPECT_FALSE(key.DeleteSubKey(""));
  EXPECT_FALSE(key.DeleteSubKey("sub"));
  EXPECT_TRUE(key.DeleteSubKey("SUB\\deep"));
  EXPECT_TRUE(key.DeleteSubKey("sub"));
  EXPECT_THAT(SubKeys(key), IsEmpty());
  EXPECT_FALSE(key.DeleteSubKey(""));
}

TEST_F(Registry, AnswersNothingOnADeletedKey) {
  RegistryHandle gone = Make("\\Gone");
  gone.Set("v", RegistryType::Text, "x");
  ASSERT_TRUE(Make().DeleteSubKey("Gone"));
  EXPECT_FALSE(gone.Query("v").has_value());
  EXPECT_FALSE(gone.Set("v", RegistryType::Text, "x"));
  EXPECT_FALSE(gone.DeleteValue("v"));
  EXPECT_FALSE(gone.ValueAt(0).has_value());
  EXPECT_FALSE(gone.SubKeyAt(0).has_value());
}

}  // namespace
}  // namespace quillmar::platform
