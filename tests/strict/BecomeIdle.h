// Tells the system that the program waits for its user.
#pragma once

namespace quillmar::strict {

void BecomeIdle();

}  // namespace quillmar::strict
