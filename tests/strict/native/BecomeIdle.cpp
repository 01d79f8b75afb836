#include "BecomeIdle.h"

namespace quillmar::strict {

// Every program that runs counts as idle.
void BecomeIdle() {}

}  // namespace quillmar::strict
