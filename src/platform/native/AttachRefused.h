// Whether the module that this is linked into refused to be loaded.
#pragma once

namespace quillmar::platform {

bool AttachRefused();

// Name of the function through which who loads a library asks that, for the loader takes no answer
// from the library itself: int (*)(), nonzero when it refused. Libraries that never refuse have no
// such function.
inline constexpr const char* kAttachRefused = "QmAttachRefused";

}  // namespace quillmar::platform
