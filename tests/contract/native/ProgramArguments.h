// The program's own arguments, behind those that the test framework has taken.
#pragma once

#include <string>
#include <vector>

namespace quillmar::contract {

std::vector<std::string>& ProgramArguments();

}  // namespace quillmar::contract
