// The border of the link library.
#pragma once

#include "recorder/Recorder.h"

namespace quillmar::keellink {

inline constexpr recorder::Border kBorder{"Keellink", recorder::Kind::Link};

}  // namespace quillmar::keellink
