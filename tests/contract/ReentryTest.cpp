// Exports entered again while one is under way: from inside every call that leaves the library, and
// from the messages that the wait for the start-up program lets through.
#include "Calculation.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

// The exports as they are called from inside; the login is the one that is under way or was made.
struct Inner {
  const Exports* module = nullptr;
  std::string protocolId;
  int depth = 0;
  int times = 0;
  int loginResult = -1;

  void Call() {
    if (module == nullptr || depth > 0) return;
    ++depth;
    ++times;
    int status = -1;
    loginResult =
        module->LoginCad("Strictcad.dll", 17, 1, "models", "prt", "fea", "Strict", &status);
    module->ShowDialogUT(protocolId.c_str());
    module->ObtainProtocol("Other:1");
    module->StartCalculation("shaft", "ISO");
    module->CallUTFunction(11);
    module->GetCadHinstance();
    --depth;
  }
} inner;

int QM_CDECL CallFromInside(const char*) {
  inner.Call();
  return 0;
}

class Reentry : public Calculation {
 protected:
  ~Reentry() override { inner = {}; }
};

TEST_F(Reentry, FromInsideEveryCall) {
  const std::string undisturbed = Calculated(kShaft);
  host.Finish(QM_CALLBACK_NEW_PART, undisturbed);
  const std::vector<std::string> expected = OnlyCall("InsertShaft", 3);

  const std::string id = Calculated(kShaft);
  inner = {&module, Calculated(kParametricPart)};
  const std::string reference = Record(inner.protocolId).Reference();
  strict::Core().Strict_SetAnswer("GetProtocol.text", reference.c_str());
  ForgetCalls();
  strict::Core().Strict_SetVisitor(&CallFromInside);
  host.Finish(QM_CALLBACK_NEW_PART, id);
  strict::Core().Strict_SetVisitor(nullptr);
  EXPECT_GT(inner.times, 50);
  EXPECT_EQ(inner.loginResult, 1);

  std::vector<std::string> arguments = OnlyCall("InsertShaft", 3);
  ASSERT_EQ(arguments.size(), expected.size());
  EXPECT_EQ(arguments[0], id);
  EXPECT_EQ(arguments[2], expected[2]);
  EXPECT_EQ(arguments[3], id);
  EXPECT_EQ(StateOf(id), QM_PROTOCOL_CLOSED);
  EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
  platform::PumpMessages();
}

// The host's message arrives while the call that it came from is under way. Whether the system
// hands it over before that call returns is the system's affair; either way it is handled once.
TEST_F(Reentry, FromMessagesDuringACallOfTheHost) {
  struct Row {
    int method;
    std::size_t inserts;  // what the dispatcher asks while it handles a message brings another one
  };
  for (const Row& row :
       {Row{QM_HOST_SHOW_CALCULATION, 1}, {QM_HOST_CALLBACK_CODE, 2}, {QM_HOST_CALLBACK_LIST, 2}}) {
    SCOPED_TRACE(row.method);
    const std::string id = Calculated(kShaft);
    const std::string shown = Calculated(kParametricPart);
    host.Forget();
    host.Answer(std::to_string(QM_HOST_CALLBACK_CODE), std::to_string(QM_CALLBACK_NEW_PART));
    host.Answer(std::to_string(QM_HOST_CALLBACK_LIST), id);
    host.Answer(std::to_string(QM_HOST_SHOW_CALCULATION), "7");
    host.Answer("post " + std::to_string(row.method));
    host.Answer("post " + std::to_string(QM_HOST_SHOW_CALCULATION));
    ForgetCalls();
    EXPECT_EQ(module.ShowDialogUT(shown.c_str()), 7);
    platform::PumpMessages();
    EXPECT_THAT(Calls("InsertShaft"), SizeIs(row.inserts));
    EXPECT_EQ(StateOf(id), QM_PROTOCOL_CLOSED);
    EXPECT_EQ(StateOf(shown), QM_PROTOCOL_CLOSED);
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
  }
}

class EnteringHandler : public platform::WindowHandler {
 public:
  void OnMessage(unsigned) override { inner.Call(); }
  void OnShown() override {}
};

class ReentryAtLogin : public Contract {
 protected:
  ~ReentryAtLogin() override { inner = {}; }
};

TEST_F(ReentryAtLogin, FromTheWaitForTheStartUpProgram) {
  RemoveValue(Hive::CurrentUser, kModuleKey + "\\Salvora", "SALVORA");
  host = HostSide::Start();
  ASSERT_TRUE(LoadModule());
  LoadCad();
  constexpr int kSomeTemplate = 4002;
  EnteringHandler handler;
  const auto window = platform::HiddenWindow::Create(loaded.Get(), kSomeTemplate, handler);
  ASSERT_TRUE(window);
  inner = {&module, "P1"};
  platform::PostToWindow(window->Handle(), platform::RegisterMessage("Reentry"));
  EXPECT_EQ(Login(), 1);
  EXPECT_EQ(inner.times, 1) << "the wait let no message through";
  EXPECT_EQ(inner.loginResult, 1);
  EXPECT_EQ(status, 1);
  EXPECT_THAT(Calls("LoginToCom"), SizeIs(1)) << "the inner login is no second one";
  EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
  inner = {};
}

}  // namespace
}  // namespace quillmar::contract
