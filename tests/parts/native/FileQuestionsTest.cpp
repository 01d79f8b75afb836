// Names for which the user is asked. His answers can be said beforehand on a machine of the tests'
// own only.
#include "FileNamesWorld.h"
#include "platform/Profile.h"
#include "platform/native/Machine.h"

namespace quillmar::test {
namespace {

class FileQuestionsTest : public FileNamesWorld {};

TEST_F(FileQuestionsTest, TheUserIsAsked) {
  const std::vector<Setting> folder = {
      {"SharedFileName", "n"}, {"SharedFolderType", "", 8}, {"SharedStructure", "", 1}};
  const std::vector<Setting> file = {{"SharedFileName", "n"}, {"SharedFolderType", "", 16}};
  auto& machine = platform::Machine::Current();
  machine.Answers().folders = {"E:\\picked"};
  machine.Answers().saveFiles = {"E:\\saved\\as.prt"};
  // The text is no format: only the place of the name in it means something.
  const std::string language = SuiteFolder() + "\\Questions.lng";
  ASSERT_TRUE(platform::WriteProfileText(language, "112", "EN", "Where is %s? (100%n)"));
  texts.Load(language, "EN");
  struct Question {
    std::string kind;
    std::string title;
    std::string text;
  };
  const auto expectAsked = [&](const Question& question) {
    const platform::ShownDialog& shown = machine.Shown().back();
    EXPECT_EQ(shown.kind, question.kind);
    EXPECT_EQ(shown.title, question.title);
    EXPECT_EQ(shown.text, question.text);
  };
  const std::string prompt = "Where is n.prt? (100%n)";
  const std::string filter = "\nParts (*.prt)|*.prt|";
  EXPECT_EQ(Name(false, folder, {{"Globals", "RefKey", "A1"}}), "E:\\picked\\n.prt");
  expectAsked({"folder", prompt, "c:\\"});
  EXPECT_EQ(options.ReadOptionText("OptGeneral", "LastQuestionPath", ""), "E:\\picked");
  EXPECT_EQ(Name(false, file, {{"View", "Description", "left"}}), "E:\\saved\\as.prt");
  expectAsked({"save", "Cap (left)", "E:\\picked\\n.prt" + filter});
  EXPECT_EQ(options.ReadOptionText("OptGeneral", "LastQuestionPath", ""), "E:\\saved\\");
  EXPECT_EQ(Name(false, folder), "(cancelled)");
  expectAsked({"folder", prompt, "E:\\saved\\"});
  EXPECT_EQ(Name(false, file), "(cancelled)");
  expectAsked({"save", "Cap ()", "E:\\saved\\n.prt" + filter});
}

}  // namespace
}  // namespace quillmar::test
