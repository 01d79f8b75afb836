// Options and file-name settings in both hives.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/RegistryKey.h"
#include "options/FileNameSettings.h"
#include "options/OptionsStore.h"
#include "platform/System.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

using platform::Hive;

class OptionsTest : public testing::Test {
 protected:
  ~OptionsTest() override {
    for (const Hive hive : {Hive::CurrentUser, Hive::LocalMachine}) {
      RegistryKey key;
      if (key.Open(hive, root)) key.DeleteKey();
    }
  }

  void Set(Hive hive, const std::string& section, const std::string& name,
           const std::string& text) {
    RegistryKey key;
    key.Create(hive, root + "\\" + section);
    key.WriteString(name, text);
  }

  void Set(Hive hive, const std::string& section, const std::string& name, std::uint32_t number) {
    RegistryKey key;
    key.Create(hive, root + "\\" + section);
    key.WriteDword(name, number);
  }

  // The user's value as a text; "(none)" when there is none.
  std::string User(const std::string& section, const std::string& name) {
    RegistryKey key;
    std::string text;
    std::uint32_t number = 0;
    if (!key.Open(Hive::CurrentUser, root + "\\" + section)) return "(none)";
    if (key.ReadDword(name, number)) return std::to_string(number);
    return key.ReadString(name, text) ? text : "(none)";
  }

  std::vector<std::string> Tags() {
    std::vector<std::string> found;
    const OptionsStore options("title", root);
    for (const BomTag& tag : options.Tags()) found.push_back(tag.name + "=" + tag.text);
    return found;
  }

  TestMachine machine;
  std::string root = machine.RegistryPath();
};

TEST_F(OptionsTest, DefaultsWithoutAnyValue) {
  const OptionsStore options("title", root);
  EXPECT_EQ(options.CaptionTemplate(), "%Caption%");
  EXPECT_FALSE(options.UpperCase());
  EXPECT_EQ(options.ReplaceSpaces(), 0);
  EXPECT_TRUE(options.Tags().empty());
  EXPECT_FALSE(options.SmartParts());
  EXPECT_EQ(options.KcWindow().pictureSize, 56);
  EXPECT_TRUE(options.KcWindow().useWindow);
  EXPECT_FALSE(options.KcWindow().activateWindow);
}

TEST_F(OptionsTest, UserGoesBeforeMachineBeforeFallback) {
  const OptionsStore options("title", root);
  EXPECT_EQ(options.ReadOptionText("S", "v", "fallback"), "fallback");
  Set(Hive::LocalMachine, "S", "v", "machine");
  EXPECT_EQ(options.ReadOptionText("S", "v", "fallback"), "machine");
  options.WriteOptionText("S", "v", "user");
  EXPECT_EQ(options.ReadOptionText("S", "v", "fallback"), "user");
  Set(Hive::CurrentUser, "S", "v", 7u);  // of the wrong kind: passed by
  EXPECT_EQ(options.ReadOptionText("S", "v", "fallback"), "machine");
  options.WriteOptionInt("S", "n", -3);
  EXPECT_EQ(options.ReadOptionInt("S", "n", 1), -3);
  options.DeleteSection("S");
  EXPECT_EQ(User("S", "n"), "(none)");
  EXPECT_EQ(options.ReadOptionText("S", "v", "fallback"), "machine");
}

TEST_F(OptionsTest, EachFlagHasItsValue) {
  const std::pair<const char*, const char*> flags[] = {{"OptGeneral", "Show2"},
                                                       {"OptGeneral", "HideTreeOption"},
                                                       {"OptGeneral", "HideLocalFile"},
                                                       {"OptGeneral", "HideSharedFile"},
                                                       {"OptGeneral", "NoDefaultFileNames"},
                                                       {"OptGeneral", "HideReplaceFileSpaces"},
                                                       {"OptBom", "HideReplaceCaptionSpaces"},
                                                       {"OptGeneral", "SharedFilesToAsm"},
                                                       {"OptGeneral", "HideLocalPartQuestion"}};
  for (int set = 1; set <= 9; ++set) {
    for (int number = 1; number <= 9; ++number) {
      Set(Hive::CurrentUser, flags[number - 1].first, flags[number - 1].second,
          number == set ? 1u : 2u);
    }
    const OptionsStore options("title", root);
    for (int number = 1; number <= 9; ++number) {
      EXPECT_EQ(options.Flag(number), number == set) << number;
    }
  }
}

TEST_F(OptionsTest, AnotherApplicationReplacesEverything) {
  Set(Hive::CurrentUser, "A\\OptBom", "User_Mass", "%Mass%");
  Set(Hive::CurrentUser, "A\\OptBom", "TitleExt", "");
  Set(Hive::CurrentUser, "A\\OptBom", "MakeUpperCase", 1u);
  Set(Hive::CurrentUser, "A\\OptKC", "PicSize", 72u);
  OptionsStore options("title", root + "\\A");
  EXPECT_EQ(options.Tags().size(), 1u);
  EXPECT_EQ(options.CaptionTemplate(), "");
  EXPECT_TRUE(options.UpperCase());
  EXPECT_EQ(options.KcWindow().pictureSize, 56);
  options.Replace("other", root + "\\B");
  EXPECT_EQ(options.Key(), root + "\\B");
  EXPECT_TRUE(options.Tags().empty());
  EXPECT_FALSE(options.UpperCase());
}

TEST_F(OptionsTest, AnyUserTextHidesTheMachinesTags) {
  Set(Hive::LocalMachine, "OptBom", "user_Mass", "%Mass%");
  Set(Hive::LocalMachine, "OptBom", "Other", "x");
  EXPECT_EQ(Tags(), std::vector<std::string>{"Mass=%Mass%"});
  Set(Hive::CurrentUser, "OptBom", "ReplaceSpaces", 1u);
  EXPECT_EQ(Tags(), std::vector<std::string>{"Mass=%Mass%"});
  Set(Hive::CurrentUser, "OptBom", "TitleExt", "%Caption%");
  EXPECT_TRUE(Tags().empty());
  Set(Hive::CurrentUser, "OptBom", "User_Long", std::string(1025, 'x'));
  Set(Hive::CurrentUser, "OptBom", "USER_Fit", std::string(1024, 'x'));
  EXPECT_EQ(Tags(), std::vector<std::string>{"Fit=" + std::string(1024, 'x')});
}

TEST_F(OptionsTest, FileNameSettingsAreMadeOnce) {
  const std::string documents = platform::DocumentsFolder() + "\\";
  FileNameSettings settings;
  settings.Load(root + "\\", machine.InFolder("missing.ini"));
  EXPECT_EQ(settings.Key(), root + "\\OptGeneral2");
  EXPECT_EQ(settings.Items(), 7u);
  EXPECT_EQ(settings.LocalPartsItems(), 57u);
  EXPECT_EQ(settings.SharedPartsItems(), 121u);
  const std::pair<const char*, std::string> made[] = {
      {"LocalFileName", "%CBFName%"},
      {"LocalFolder", documents},
      {"LocalFolderType", "1"},
      {"LocalStructure", "0"},
      {"SharedFileName", "%CBFName% %BOM2% %Subtype%"},
      {"SharedFolder", documents},
      {"SharedStructure", "0"},
      {"SharedFolderType", "32"},
      {"ReplaceSpaces", "0"}};
  for (const auto& [name, value] : made) EXPECT_EQ(User("OptGeneral2", name), value) << name;

  Set(Hive::CurrentUser, "OptGeneral2", "LocalFileName", "mine");
  settings.Load(root + "\\", machine.InFolder("missing.ini"));
  EXPECT_EQ(User("OptGeneral2", "LocalFileName"), "mine");
  EXPECT_EQ(User("OptGeneral", "TitleExt1"), "mine");
}

TEST_F(OptionsTest, FileNameSettingsFollowHostFileAndOldValues) {
  const std::string ini = machine.InFolder("host.ini");
  machine.WriteFile(ini,
                    "[Quillmar-General]\r\nItems=1\r\nLocalPartsItems=2\r\nSharedPartsItems=128\r\n"
                    "LocalFileNameDefault=%BOM1%\r\nSharedFileNameDefault=%BOM2%\r\n");
  FileNameSettings settings;
  settings.Load(root + "\\A\\", ini);
  EXPECT_EQ(settings.Items(), 1u);
  EXPECT_EQ(User("A\\OptGeneral2", "LocalFolderType"), "2");
  EXPECT_EQ(User("A\\OptGeneral2", "SharedFolderType"), "128");
  EXPECT_EQ(User("A\\OptGeneral2", "LocalFileName"), "%BOM1%");
  EXPECT_EQ(User("A\\OptGeneral2", "SharedFileName"), "%BOM2%");

  for (const auto& [old, type] : {std::pair{0u, "1"}, {1u, "32"}, {2u, "16"}, {9u, "16"}}) {
    const std::string application = "Old" + std::to_string(old);
    Set(Hive::LocalMachine, application + "\\OptGeneral", "SmartDirType", old);
    Set(Hive::CurrentUser, application + "\\OptGeneral", "TitleExt2", "old name");
    Set(Hive::CurrentUser, application + "\\OptGeneral", "StandardDirType", 1u);
    Set(Hive::CurrentUser, application + "\\OptGeneral", "ReplaceSpaces", 2u);
    settings.Load(root + "\\" + application + "\\", ini);
    EXPECT_EQ(User(application + "\\OptGeneral2", "LocalFolderType"), type);
    EXPECT_EQ(User(application + "\\OptGeneral2", "SharedFileName"), "old name");
    EXPECT_EQ(User(application + "\\OptGeneral2", "SharedStructure"), "1");
    EXPECT_EQ(User(application + "\\OptGeneral2", "ReplaceSpaces"), "2");
  }
}

TEST_F(OptionsTest, OlderProgramsGetTheirCopies) {
  FileNameSettings settings;
  settings.Load(root + "\\", machine.InFolder("missing.ini"));
  for (const auto& [type, old] : {std::pair{1u, "0"},
                                  {32u, "1"},
                                  {2u, "0"},
                                  {8u, "2"},
                                  {4u, "0"},
                                  {16u, "2"},
                                  {128u, "0"},
                                  {32u, "1"},
                                  {64u, "1"}}) {
    Set(Hive::CurrentUser, "OptGeneral2", "LocalFolderType", type);
    settings.ExportLegacyFileNameSettings();
    EXPECT_EQ(User("OptGeneral", "SmartDirType"), old) << type;  // 64 writes nothing
  }
  Set(Hive::CurrentUser, "OptGeneral2", "SharedStructure", 5u);
  Set(Hive::CurrentUser, "OptGeneral2", "LocalFolder", "D:\\l");
  Set(Hive::CurrentUser, "OptGeneral2", "SharedFolder", "D:\\s");
  Set(Hive::CurrentUser, "OptGeneral2", "ReplaceSpaces", 1u);
  settings.ExportLegacyFileNameSettings();
  EXPECT_EQ(User("OptGeneral", "StandardDirType"), "5");
  EXPECT_EQ(User("OptGeneral", "SmartDir"), "D:\\l");
  EXPECT_EQ(User("OptGeneral", "StandardDir"), "D:\\s");
  EXPECT_EQ(User("OptGeneral", "ReplaceSpaces"), "1");
}

}  // namespace
}  // namespace quillmar
