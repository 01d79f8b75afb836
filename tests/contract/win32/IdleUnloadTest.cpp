// The end of a session that nobody logged out of.
#include <windows.h>

#include "Contract.h"

namespace quillmar::contract {
namespace {

class IdleUnload : public Contract {};

// By then the system has ended the idle threads that carry calls to the host, and starts no new
// ones while it unloads.
TEST_F(IdleUnload, StillReachesTheHost) {
  constexpr DWORD kLongerThanThreadsIdle = 6500;  // milliseconds
  StartSession();
  Sleep(kLongerThanThreadsIdle);
  UnloadModule();
  EXPECT_THAT(Calls("SendModelessMessage"), SizeIs(1));
}

}  // namespace
}  // namespace quillmar::contract
