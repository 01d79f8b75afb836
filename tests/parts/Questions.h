// What the user answers to the next folder and file question. On a machine of its own a test says
// it; on a real one nobody is there to answer, and the calls give false.
#pragma once

#include <string>

namespace quillmar::test {

bool AnswerNextFolderQuestion(const std::string& folder);
bool AnswerNextFileQuestion(const std::string& file);

}  // namespace quillmar::test
