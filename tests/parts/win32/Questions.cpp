#include "Questions.h"

namespace quillmar::test {

bool AnswerNextFolderQuestion(const std::string&) { return false; }
bool AnswerNextFileQuestion(const std::string&) { return false; }

}  // namespace quillmar::test
