// What the module does without when an add-in lacks an optional function.
#pragma once

#include <string_view>

namespace tools {

// Empty for a required function.
std::string_view LossWithout(std::string_view function);

}  // namespace tools
