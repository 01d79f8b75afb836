// What is offered for templates: built-in tags, those of a file, fields of the material database.
#include "bom/TagVocabulary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "base/InstallationPaths.h"
#include "base/RegistryKey.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

const std::string kBuiltIn =
    "BOM1 BOM2 BOM3 Mass CBFName SizeID UniqueID Caption ModelName Subtype ";

class TagVocabularyTest : public testing::Test {
 protected:
  ~TagVocabularyTest() override {
    RegistryKey key;
    if (key.Open(platform::Hive::CurrentUser, materialKey)) key.DeleteValue("UseMatDB");
  }

  void UseMaterials(std::optional<std::uint32_t> use) const {
    RegistryKey key;
    ASSERT_TRUE(key.Create(platform::Hive::CurrentUser, materialKey));
    key.DeleteValue("UseMatDB");
    if (use) {
      ASSERT_TRUE(key.WriteDword("UseMatDB", *use));
    }
  }

  // Each tag, with "=" and what the user reads where that is something else.
  std::string Offered() const {
    std::string all;
    for (const OfferedTag& tag : OfferedTags(file)) {
      all += tag.token + (tag.display == tag.token ? "" : "=" + tag.display) + " ";
    }
    return all;
  }

  TestMachine machine;
  std::string file = machine.InFolder("Tags.ini");
  std::string materialKey = GetModuleRegistryKey(true) + "Fendrake\\MatDb";
};

TEST_F(TagVocabularyTest, FileAndMaterialDatabaseAddToTheBuiltInTags) {
  const struct {
    const char* file;
    std::optional<std::uint32_t> useMaterials;
    std::string added;
  } rows[] = {
      {nullptr, {}, ""},
      {nullptr, 1, "BOM10 BOM11 BOM12 "},
      {"[Settings]\r\nNote=\r\nRefKey=7\r\nNOTE2=x\r\n", {}, "Note RefKey NOTE2 "},
      {"[MatDB]\r\nUserCount=2\r\n[Names]\r\nBOM10=Heat\r\n[Settings]\r\nNote=\r\n", 1,
       "Note BOM10=Heat BOM11 "},
      {"[Names]\r\nBOM9=no\r\nBOM12=Supplier\r\nBOM13=no\r\n", 1, "BOM10 BOM11 BOM12=Supplier "},
      {"[MatDB]\r\nUserCount=2\r\n", 0, ""},
      {"[MatDB]\r\nUserCount=2\r\n", 2, ""},
      {"[MatDB]\r\nUserCount=0\r\n", 1, ""},
      {"[MatDB]\r\nUserCount=-4\r\n", 1, ""},
  };
  for (const auto& row : rows) {
    if (row.file != nullptr) machine.WriteFile(file, row.file);
    UseMaterials(row.useMaterials);
    EXPECT_EQ(Offered(), kBuiltIn + row.added) << (row.file != nullptr ? row.file : "no file");
  }
}

TEST_F(TagVocabularyTest, NamesOfTheHostEndAtTheFirstEmptyOne) {
  EXPECT_THAT(HostExtendedDataNames(file), ElementsAre());
  machine.WriteFile(file,
                    "[BOMDATAEX]\r\n2=Second\r\n1=First one\r\n3=\r\n4=never\r\n0=never\r\n"
                    "[General]\r\n3=never\r\n");
  EXPECT_THAT(HostExtendedDataNames(file), ElementsAre("First one", "Second"));
}

}  // namespace
}  // namespace quillmar
