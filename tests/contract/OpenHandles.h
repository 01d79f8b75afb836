// Files, threads and other things of the system that the process holds.
#pragma once

namespace quillmar::contract {

int OpenHandles();

}  // namespace quillmar::contract
