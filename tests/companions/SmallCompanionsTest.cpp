// The companions of which a session needs little more than that they are there.
#include <gtest/gtest.h>

#include <string>

#include "platform/Modules.h"
#include "platform/Processes.h"
#include "quillmar/BoltedConnections.h"
#include "support/TestMachine.h"

namespace quillmar::test {
namespace {

class SmallCompanionsTest : public ::testing::Test {
 protected:
  void Load(const char* file) {
    library = platform::LoadLibraryAt(machine.Install(file, machine.Folder())).library;
  }

  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(platform::FindFunction(library.Get(), name));
  }

  TestMachine machine;
  platform::Library library;
};

TEST_F(SmallCompanionsTest, BoltedConnectionsAreTakenByIdentifier) {
  Load(QM_BOLTED_CONNECTION_LIBRARY);
  using TakeConnection = int(QM_CDECL*)(const char*);
  for (const char* name :
       {"InsertBoltedConnection", "EditBoltedConnection", "PrepareMCWProtocol"}) {
    const auto take = Find<TakeConnection>(name);
    ASSERT_NE(take, nullptr) << name;
    EXPECT_NE(take("P1"), 0) << name;
    EXPECT_EQ(take(""), 0) << name;
    EXPECT_EQ(take(nullptr), 0) << name;
  }
  using EditAgain = int(QM_CDECL*)(const char*, int, int);
  const auto edit = Find<EditAgain>("EditBoltedConnection2");
  ASSERT_NE(edit, nullptr);
  EXPECT_NE(edit("P1", 1, 2), 0);
}

TEST_F(SmallCompanionsTest, AWindowThatIsGoneIsNotBroughtToTheFront) {
  Load(QM_FOREGROUND_LIBRARY);
  using BringToFront = int(QM_CDECL*)(QmWindow);
  const auto bring = Find<BringToFront>("McSetForegroundWindow");
  ASSERT_NE(bring, nullptr);
  EXPECT_EQ(bring(0), 0);
  EXPECT_EQ(bring(0x7FFFFFFF), 0);
}

TEST_F(SmallCompanionsTest, SalvoraEndsByItself) {
  const std::string program = machine.Install("Salvora.exe", machine.Folder());
  auto process = platform::StartProgram({program, program, machine.Folder()});
  ASSERT_TRUE(process.has_value());
  process->WaitUntilEndedPumpingMessages();
}

}  // namespace
}  // namespace quillmar::test
