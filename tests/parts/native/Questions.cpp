#include "Questions.h"

#include "platform/native/Machine.h"

namespace quillmar::test {

bool AnswerNextFolderQuestion(const std::string& folder) {
  platform::Machine::Current().Answers().folders.push_back(folder);
  return true;
}

bool AnswerNextFileQuestion(const std::string& file) {
  platform::Machine::Current().Answers().saveFiles.push_back(file);
  return true;
}

}  // namespace quillmar::test
