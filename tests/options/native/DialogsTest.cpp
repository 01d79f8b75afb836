// The depth dialog, and saving options when the registry's file cannot be written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <filesystem>

#include "base/RegistryKey.h"
#include "options/DepthDialog.h"
#include "platform/Messages.h"
#include "platform/native/Machine.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

using platform::FormAnswer;
using platform::Machine;

class DialogsTest : public testing::Test {
 protected:
  DialogsTest() {
    machine.WriteFile(machine.InFolder("t.lng"),
                      "[45]\r\nEN=None\r\n[46]\r\nEN=All\r\n[47]\r\nEN=No depth\r\n");
    texts.Load(machine.InFolder("t.lng"), "EN");
  }

  std::optional<Depths> Ask(const std::vector<FormAnswer>& answers) {
    Machine::Current().Shown().clear();
    Machine::Current().Answers().forms = {answers.begin(), answers.end()};
    return AskDepths(options, texts, {});
  }

  std::string Stored(const char* name) {
    return options.ReadOptionText("OptGeneral", name, "") +
           std::to_string(options.ReadOptionInt("OptGeneral", name, -1));
  }

  TestMachine machine;
  OptionsStore options{"title", machine.RegistryPath()};
  LanguageTable texts;
};

TEST_F(DialogsTest, DepthsAreChosenOrTyped) {
  struct Row {
    FormAnswer answer;
    int parents;
    int children;
    const char* values;
  };
  for (const Row& row : {Row{{}, -1, -1, "1,2,3"},
                         {{{"DepthParIdx", "None"}, {"DepthChiIdx", "2"}}, 0, 2, "1,2,3"},
                         {{{"DepthParIdx", "5"}}, 5, 2, "1,2,3,5"},
                         {{{"DepthParIdx", "All"}, {"DepthChiIdx", "4"}}, -1, 4, "1,2,3,4,5"},
                         {{}, -1, 4, "1,2,3,4,5"}}) {
    const auto depths = Ask({row.answer});
    ASSERT_TRUE(depths);
    EXPECT_EQ(depths->parents, row.parents) << row.values;
    EXPECT_EQ(depths->children, row.children) << row.values;
    EXPECT_EQ(Stored("DepthValues"), row.values + std::string("-1"));
  }
  EXPECT_EQ(Stored("DepthChiIdx"), "4");
}

TEST_F(DialogsTest, WhatIsNoDepthKeepsTheDialogOpen) {
  for (const char* typed : {"0", "x", "", "2x", "-1"}) {
    EXPECT_FALSE(Ask({{{"DepthParIdx", typed}}})) << typed;
    EXPECT_EQ(Machine::Current().Shown().back().text, "No depth");
  }
  const auto depths = Ask({{{"DepthParIdx", "0"}}, {{"DepthParIdx", "7"}}});
  ASSERT_TRUE(depths);
  EXPECT_EQ(depths->parents, 7);
}

TEST_F(DialogsTest, ASaveThatCannotBeWrittenLosesNothing) {
  options.WriteOptionText("OptBom", "User_Old", "old");
  options.WriteOptionInt("OptKC", "PicSize", 72);
  const std::filesystem::path file =
      Machine::Current().Root() / "registry" / "HKEY_CURRENT_USER.reg";
  const auto writable = std::filesystem::status(file).permissions();
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  EditedOptions edited = options.Edited();
  edited.tags = {{"New", "new"}};
  options.Save(edited);
  std::filesystem::permissions(file, writable);
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_Old", ""), "old");
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_New", ""), "");
  EXPECT_EQ(options.Tags().front().name, "New") << "they hold for this session";
  options.Save(edited);
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_Old", ""), "");
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_New", ""), "new");
  EXPECT_EQ(options.ReadOptionInt("OptBom", "NotDefaultTags", 0), 1);
}

// While it lives, no file of this process can grow beyond `bytes`, as on a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
  }

 private:
  rlimit before{};
  void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

// There is room for the file without the old options, but not for all of the new ones.
TEST_F(DialogsTest, ASaveThatFailsHalfWayLosesNothing) {
  options.WriteOptionText("OptBom", "User_Old", std::string(500, 'o'));
  options.WriteOptionInt("OptKC", "PicSize", 70);
  const std::filesystem::path folder = Machine::Current().Root() / "registry";
  const auto files = [&] { return std::distance(std::filesystem::directory_iterator(folder), {}); };
  const auto filesBefore = files();
  EditedOptions edited = options.Edited();
  edited.tags = {{"Short", "s"}, {"Long", std::string(1000, 'n')}};
  {
    const FullDisk full(file_size(folder / "HKEY_CURRENT_USER.reg"));
    options.Save(edited);
  }
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_Old", ""), std::string(500, 'o'));
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_Short", "none"), "none");
  EXPECT_EQ(options.ReadOptionInt("OptKC", "PicSize", 0), 70);
  EXPECT_EQ(files(), filesBefore);
  options.Save(edited);
  EXPECT_EQ(options.ReadOptionText("OptBom", "User_Long", ""), std::string(1000, 'n'));
}

// The window of subsidiary calculations, as somebody who makes one registers it.
struct KcWindow : platform::WindowHandler {
  void OnMessage(unsigned message) override { messages.push_back(message); }
  void OnShown() override {}

  std::vector<unsigned> messages;
  std::unique_ptr<platform::HiddenWindow> window =
      platform::HiddenWindow::Create(nullptr, 1, *this);
};

TEST_F(DialogsTest, AfterASaveTheKcWindowRereadsItsSettings) {
  const std::vector<unsigned> told{1113};
  KcWindow kc;
  options.Save(options.Edited());
  EXPECT_TRUE(kc.messages.empty()) << "it is not registered";
  options.RegisterKcWindow(kc.window->Handle());
  options.Save(options.Edited());
  EXPECT_EQ(kc.messages, told);
  options.ReadConfiguration();
  options.Save(options.Edited());
  EXPECT_EQ(kc.messages, told) << "what was read anew has forgotten the window";
  options.RegisterKcWindow(kc.window->Handle());
  kc.window.reset();
  options.Save(options.Edited());
  EXPECT_EQ(kc.messages, told);
}

}  // namespace
}  // namespace quillmar
