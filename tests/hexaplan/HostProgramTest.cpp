// Hexaplan.exe as a program of the machine: started, found, called, ended.
#include <gmock/gmock.h>

#include "TestMachine.h"
#include "hexaplan/host/ProtocolStore.h"
#include "platform/Automation.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "quillmar/CalculationHost.h"

namespace hexaplan {
namespace {

using namespace quillmar::platform;

constexpr char kSuite[] = "C:\\Vantorel\\Fendrake";

std::unique_ptr<AutomationObject> StartHost() {
  ProgramStart start;
  start.program = std::string(kSuite) + "\\Hexaplan.exe";
  start.show = ShowMode::MinimizedWithoutActivation;
  auto process = StartProgram(start);
  if (!process) return nullptr;
  process->WaitUntilIdle();
  return FindActiveObject(*FindAutomationClass(QM_HOST_PROGID));
}

// The system forgets the object of a dead program after a moment only.
bool IsForgotten() {
  const auto begin = TickCount();
  while (FindActiveObject(QM_HOST_CLASS_ID) != nullptr && TickCount() - begin < 10000) {
    PumpMessages();
  }
  return FindActiveObject(QM_HOST_CLASS_ID) == nullptr;
}

TEST(HostProgram, ServesItsClassAndIsGoneWhenItDies) {
  TestMachine machine;
  InitializeAutomation();
  EXPECT_EQ(FindAutomationClass(QM_HOST_PROGID), QM_HOST_CLASS_ID);
  EXPECT_EQ(FindActiveObject(QM_HOST_CLASS_ID), nullptr);
  auto host = StartHost();
  ASSERT_NE(host, nullptr);

  const auto ready = host->Call(QM_HOST_IS_READY, {}, AutomationType::Int);
  EXPECT_EQ(ready.status, AutomationStatus::Done);
  EXPECT_EQ(std::get<int>(ready.value), 1);
  EXPECT_EQ(host->FindMember("SetCADHwnd"), QM_HOST_SET_CAD_WINDOW);
  EXPECT_EQ(host->FindMember("SetCADWindow"), std::nullopt);
  EXPECT_EQ(host->Call(0x99, {}, AutomationType::Int).status, AutomationStatus::UnknownMember);
  EXPECT_EQ(host->Call(QM_HOST_COMMAND, {}, AutomationType::Int).status, AutomationStatus::Failed);
  EXPECT_EQ(host->Call(QM_HOST_SESSION, {2, std::string("0"), std::string("258"), std::string("D")},
                       AutomationType::None)
                .status,
            AutomationStatus::Done);
  EXPECT_EQ(
      std::get<std::string>(host->Call(QM_HOST_COMPANION_FOLDER, {}, AutomationType::Text).value),
      kSuite);

  // The store is shared with the host, wherever it lives.
  ProtocolStore store;
  ASSERT_TRUE(store.Load(kSuite));
  auto record = ProtocolRecord::CreateNew(store);
  record->PutKeyWord("Main", "DataFile", "KEELDATA|SHAFT");
  record->PutKeyWord("Cadx", "Recalc", "1");
  ASSERT_TRUE(record->Close());
  const AutomationArguments protocol{record->Id()};
  const auto shown = host->Call(QM_HOST_SHOW_CALCULATION, protocol, AutomationType::Int);
  EXPECT_EQ(std::get<int>(shown.value), 1);
  EXPECT_EQ(
      std::get<std::string>(host->Call(QM_HOST_CALLBACK_LIST, {}, AutomationType::Text).value),
      record->Id());
  EXPECT_EQ(ProtocolRecord::Open(store, record->Id())->Global("TypeOfPart"), "9");

  const std::string faults = std::string(kSuite) + "\\HostFaults.ini";
  WriteProfileText(faults, "Faults", "DieInMethod", "3");
  EXPECT_EQ(host->Call(QM_HOST_CALLBACK_CODE, {}, AutomationType::Int).status,
            AutomationStatus::ServerGone);
  EXPECT_EQ(host->Call(QM_HOST_IS_READY, {}, AutomationType::Int).status,
            AutomationStatus::ServerGone);
  EXPECT_TRUE(IsForgotten());

  // Another one can be started in its place.
  WriteProfileText(faults, "Faults", "DieInMethod", "0");
  host = StartHost();
  ASSERT_NE(host, nullptr);
  EXPECT_EQ(std::get<int>(host->Call(QM_HOST_IS_READY, {}, AutomationType::Int).value), 1);
  WriteProfileText(faults, "Faults", "DieInMethod", "3");
  host->Call(QM_HOST_CALLBACK_CODE, {}, AutomationType::Int);
}

// The request goes through the inter-process library, as the module sends it.
TEST(HostProgram, EndsWhenANotificationAsksForIt) {
  TestMachine machine;
  InitializeAutomation();
  auto host = StartHost();
  ASSERT_NE(host, nullptr);
  ProtocolStore store;
  ASSERT_TRUE(store.Load(kSuite));
  const auto loaded = LoadLibraryAt(std::string(kSuite) + "\\Tessio.dll");
  ASSERT_TRUE(loaded.library);
  const auto function = [&](const char* name) { return FindFunction(loaded.library.Get(), name); };
  using Login = int(QM_CDECL*)(int, QmModule, const char*, int, int*);
  using Send = int(QM_CDECL*)(int, int, const char*);
  int result = 0;
  ASSERT_NE(reinterpret_cast<Login>(function("LoginToCom"))(1, nullptr, "Test", 0, &result), 0);

  auto request = ProtocolRecord::CreateNew(store);
  request->PutGlobal("Exit", "1");
  EXPECT_NE(reinterpret_cast<Send>(function("SendModelessMessage"))(5000, 3, request->Id().c_str()),
            0);
  ASSERT_TRUE(request->Close());
  const auto status = [&] {
    PumpMessages();
    return host->Call(QM_HOST_IS_READY, {}, AutomationType::Int).status;
  };
  const auto begin = TickCount();
  while (status() != AutomationStatus::ServerGone && TickCount() - begin < 10000) continue;
  EXPECT_EQ(status(), AutomationStatus::ServerGone);
  EXPECT_TRUE(IsForgotten());
  EXPECT_FALSE(store.Exists(request->Id()));
}

}  // namespace
}  // namespace hexaplan
