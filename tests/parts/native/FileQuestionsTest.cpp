// Names for which the user is asked. His answers can be said beforehand on a machine of the tests'
// own only.
#include "FileNamesWorld.h"
#include "platform/native/Machine.h"

namespace quillmar::test {
namespace {

class FileQuestionsTest : public FileNamesWorld {};

TEST_F(FileQuestionsTest, TheUserIsAsked) {
  const std::vector<Setting> folder = {
      {"SharedFileName", "n"}, {"SharedFolderType", "", 8}, {"SharedStructure", "", 1}};
  const std::vector<Setting> file = {{"SharedFileName", "n"}, {"SharedFolderType", "", 16}};
  auto& answers = platform::Machine::Current().Answers();
  answers.folders = {"E:\\picked"};
  answers.saveFiles = {"E:\\saved\\as.prt"};
  EXPECT_EQ(Name(false, folder, {{"Globals", "RefKey", "A1"}}), "E:\\picked\\n.prt");
  EXPECT_EQ(options.ReadOptionText("OptGeneral", "LastQuestionPath", ""), "E:\\picked");
  EXPECT_EQ(Name(false, file), "E:\\saved\\as.prt");
  EXPECT_EQ(options.ReadOptionText("OptGeneral", "LastQuestionPath", ""), "E:\\saved\\");
  EXPECT_EQ(Name(false, folder), "(cancelled)");
  EXPECT_EQ(Name(false, file), "(cancelled)");
}

}  // namespace
}  // namespace quillmar::test
