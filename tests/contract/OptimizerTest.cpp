// The optimizer logs in: the program itself is named optara.exe and offers the driver functions.
#include "Contract.h"

namespace quillmar::contract {
namespace {

TEST_F(Contract, TheOptimizersSessionIsNotSentToTheHost) {
  host = HostSide::Start();
  ASSERT_TRUE(LoadModule());
  LoginArguments arguments;
  arguments.cadModuleName = "OPTARA.exe";
  ASSERT_EQ(Login(arguments), 1);
  EXPECT_NE(module.GetCadHinstance(), nullptr);
  EXPECT_THAT(host.Calls(), ElementsAre("30(17)")) << "the login's own show flag alone";
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kModuleKey + "\\Quillmar", "LastLoggedShowFlag"), 0x11u);
  EXPECT_NE(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), std::nullopt);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey + "\\Strict\\OptGeneral2", "LocalFileName"),
            std::nullopt);
  if (kStrictCompanions) {
    EXPECT_THAT(Calls("LoginToCom"), SizeIs(1));
  }
}

}  // namespace
}  // namespace quillmar::contract
