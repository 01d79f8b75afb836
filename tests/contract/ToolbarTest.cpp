// ShowToolbar: the callback window as the module's toolbar.
#include "Toolbar.h"

#include <cstdlib>

#include "Contract.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

constexpr int kCommands[] = {0x8005, 0x800C, 0x800D};

class Toolbar : public Contract {
 protected:
  // The host learns the callback window with the session.
  QmWindow Window() {
    LoginArguments arguments;
    arguments.showFlag = showFlag;
    host = HostSide::Start();
    EXPECT_TRUE(LoadModule());
    LoadCad();
    EXPECT_EQ(Login(arguments), 1);
    for (const std::string& call : host.Calls()) {
      if (call.rfind("29(2,\"", 0) == 0) {
        return static_cast<QmWindow>(std::strtol(call.c_str() + 6, nullptr, 10));
      }
    }
    ADD_FAILURE() << "the host was told no window";
    return 0;
  }

  int showFlag = 0x10;
};

TEST_F(Toolbar, IsShownAndHiddenWithItsCommandsAsTheCallerAllows) {
  showFlag = 0x10;
  const QmWindow window = Window();
  EXPECT_FALSE(IsShown(window));
  LoginArguments arguments;
  for (const auto& [flag, enabled] : {std::pair{0x10, true}, {0x0, false}, {0xFF, true}}) {
    SCOPED_TRACE(flag);
    arguments.showFlag = flag;
    ASSERT_EQ(Login(arguments), 1);
    EXPECT_EQ(module.ShowToolbar(1), 1);
    platform::PumpMessages();
    EXPECT_TRUE(IsShown(window)) << "it does not hide itself";
    for (const int command : kCommands) EXPECT_EQ(IsEnabled(window, command), enabled) << command;
    EXPECT_EQ(module.ShowToolbar(0), 1);
    EXPECT_FALSE(IsShown(window));
  }
}

TEST_F(Toolbar, AChosenCommandRunsFromTheMessageLoop) {
  const QmWindow window = Window();
  module.ShowToolbar(1);
  ForgetCalls();
  Choose(window, 0x800C);
  EXPECT_THAT(Calls("GetAllParts"), IsEmpty());
  platform::PumpMessages();
  EXPECT_THAT(Calls("GetAllParts"), SizeIs(1)) << "links are refreshed";
}

TEST_F(Toolbar, HidesItselfWhenSomebodyElseShowsIt) {
  const QmWindow window = Window();
  module.ShowToolbar(1);
  module.ShowToolbar(0);
  ShowFromOutside(window);
  EXPECT_TRUE(IsShown(window));
  platform::PumpMessages();
  EXPECT_FALSE(IsShown(window));
}

}  // namespace
}  // namespace quillmar::contract
