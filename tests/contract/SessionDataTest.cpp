// What the calculation host learns about a session.
#include "Contract.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

class SessionData : public Contract {
 protected:
  SessionData() {
    strict::Core().Strict_SetAnswer("GetMainHwnd.window", "4711");
    host = HostSide::Start();
    EXPECT_TRUE(LoadModule());
    LoadCad();
  }

  // The calls of one connection, with the window's number, which nobody knows before, taken out.
  std::vector<std::string> FirstConnection(std::size_t calls) {
    std::vector<std::string> all = host.Calls();
    if (all.size() > calls) all.resize(calls);
    for (std::string& call : all) {
      if (call.rfind("29(", 0) != 0) continue;
      const auto begin = call.find('"');
      const auto end = call.find('"', begin + 1);
      window = static_cast<QmWindow>(std::stol(call.substr(begin + 1, end - begin - 1)));
      call.replace(begin + 1, end - begin - 1, "window");
    }
    return all;
  }

  QmWindow window = 0;
};

TEST_F(SessionData, AreSentInOrder) {
  ASSERT_EQ(Login(), 1);
  EXPECT_THAT(FirstConnection(6),
              ElementsAre("50(4711)", R"(47("models","prt,fea"))", R"(33("Strict"))", "30(17)",
                          R"(29(2,"window","258","D"))", "49(1)"));
  EXPECT_TRUE(platform::IsLiveWindow(window));
  EXPECT_EQ(host.Calls().back(), "30(17)") << "the login passes the flag once more";
}

TEST_F(SessionData, EqualExtensionsAreSentOnceAndNothingEmptyIsSent) {
  LoginArguments arguments;
  arguments.featureExt = "prt";
  arguments.settingsName = "";
  ASSERT_EQ(Login(arguments), 1);
  EXPECT_THAT(FirstConnection(5), ElementsAre("50(4711)", R"(47("models","prt"))", "30(17)",
                                              R"(29(2,"window","258","D"))", "49(1)"));
}

TEST_F(SessionData, WithoutAFolderNameNeitherTextIsSent) {
  LoginArguments arguments;
  arguments.modelDirName = "";
  ASSERT_EQ(Login(arguments), 1);
  EXPECT_THAT(FirstConnection(5), ElementsAre("50(4711)", R"(33("Strict"))", "30(17)",
                                              R"(29(2,"window","258","D"))", "49(1)"));
}

TEST_F(SessionData, MethodsThatTheHostDoesNotOfferAreSkipped) {
  for (const char* name : {"SetCadSpecific", "SetSmartMode", "SetCADHwnd"}) {
    host.Answer(std::string("refuse ") + name);
  }
  ASSERT_EQ(Login(), 1);
  EXPECT_THAT(FirstConnection(3),
              ElementsAre(R"(33("Strict"))", "30(17)", R"(29(2,"window","258","D"))"));
}

TEST_F(SessionData, ADeadHostIsLetGoAndTheNextOneIsFound) {
  ASSERT_EQ(Login(), 1);
  host.Answer("die 2");
  EXPECT_EQ(module.ShowDialogUT("P1"), 0);
  EXPECT_FALSE(HostSide::Runs());
  host = HostSide::Start();
  host.Answer("2", "7");
  EXPECT_EQ(module.ShowDialogUT("P1"), 7);
  EXPECT_THAT(FirstConnection(6), testing::Contains(R"(29(2,"window","258","D"))"));
}

}  // namespace
}  // namespace quillmar::contract
