// What stays in the process when the library is unloaded.
#include <windows.h>

#include "Contract.h"

namespace quillmar::contract {
namespace {

// The thread slot that the next library would get.
DWORD NextThreadSlot() {
  const DWORD slot = TlsAlloc();
  TlsFree(slot);
  return slot;
}

class Unload : public Contract {};

// The companions stay loaded: what they keep is their own business.
TEST_F(Unload, GivesTheThreadSlotBack) {
  std::vector<platform::Library> companions;
  for (const char* name : {"Keelcomm", "Keellink", "QmarBC", "Tessio", "vxfwnd"}) {
    auto loaded = platform::LoadLibraryAt(kSuiteFolder + "\\" + name + ".dll");
    ASSERT_TRUE(loaded.library) << name;
    companions.push_back(std::move(loaded.library));
  }
  const DWORD before = NextThreadSlot();
  for (int round = 0; round < 20; ++round) {
    ASSERT_TRUE(LoadModule());
    UnloadModule();
  }
  EXPECT_EQ(NextThreadSlot(), before);
}

}  // namespace
}  // namespace quillmar::contract
