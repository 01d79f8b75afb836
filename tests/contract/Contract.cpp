#include "Contract.h"

namespace quillmar::contract {

int Contract::firstCall = 0;

Contract::Contract() {
  strict::Core().Strict_Reset();
  ForgetCalls();
  for (const Hive hive : {Hive::CurrentUser, Hive::LocalMachine}) {
    for (const char* key : {"\\Quillmar", "\\Salvora", "\\VXcSE", "\\OptGeneral", "\\OptBom",
                            "\\Fendrake", "\\Strict\\OptGeneral", "\\Strict\\OptGeneral2"}) {
      ClearKey(hive, kModuleKey + key);
    }
  }
  RemoveKey(Hive::CurrentUser, kModuleKey, "Quillmar");
  RemoveValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp");
  SetNumber(Hive::CurrentUser, kModuleKey + "\\Salvora", "SALVORA", 1);
}

Contract::~Contract() {
  // Before the add-ins go: a session that is still active is ended with their help.
  UnloadModule();
  if (host.IsAttached() && HostSide::Runs()) {
    EXPECT_EQ(host.Violations(), "");
  }
  for (int i = 0; i < strict::Core().Strict_ViolationCount(); ++i) {
    ADD_FAILURE() << "broken promise: " << strict::Core().Strict_Violation(i);
  }
}

bool Contract::LoadModule() {
  platform::LoadResult result = platform::LoadLibraryAt(kModuleFolder + "\\Quillmar.dll");
  loaded = std::move(result.library);
  if (!loaded) return false;
#define CONTRACT_BIND(name, convention, result, parameters, arguments)                      \
  module.name =                                                                             \
      reinterpret_cast<decltype(module.name)>(platform::FindFunction(loaded.Get(), #name)); \
  EXPECT_NE(module.name, nullptr) << #name " is not exported";
  QM_EXPORTS(CONTRACT_BIND)
#undef CONTRACT_BIND
  return true;
}

void Contract::UnloadModule() {
  module = {};
  loaded.Free();
}

QmModule Contract::LoadCad(const std::string& file) {
  platform::LoadResult result = platform::LoadLibraryAt(kCadFolder + "\\" + file);
  EXPECT_TRUE(result.library) << file;
  addIns.push_back(std::move(result.library));
  return addIns.back().Get();
}

int Contract::Login(const LoginArguments& arguments) {
  status = -1;
  return module.LoginCad(arguments.cadModuleName, arguments.showFlag, arguments.modelFileKind,
                         arguments.modelDirName, arguments.modelExt, arguments.featureExt,
                         arguments.settingsName, &status);
}

void Contract::StartSession(const LoginArguments& arguments) {
  host = HostSide::Start();
  ASSERT_TRUE(LoadModule());
  LoadCad();
  if (std::string(arguments.cadModuleName) != LoginArguments().cadModuleName) {
    LoadCad(std::string("Lacking\\") + arguments.cadModuleName);
  }
  ASSERT_EQ(Login(arguments), 1);
  host.Forget();
  ForgetCalls();
}

std::vector<JournalCall> Contract::Calls() {
  const strict::CoreFunctions& core = strict::Core();
  std::vector<JournalCall> calls;
  for (int i = firstCall; i < core.Strict_CallCount(); ++i) {
    const std::string function = core.Strict_CallFunction(i);
    if (function.rfind("host ", 0) == 0) continue;
    calls.push_back({function, {}, core.Strict_CallResult(i)});
    for (int k = 0; k < core.Strict_CallArgumentCount(i); ++k) {
      calls.back().arguments.emplace_back(core.Strict_CallArgument(i, k));
    }
  }
  return calls;
}

std::vector<JournalCall> Contract::Calls(const std::string& function) {
  std::vector<JournalCall> calls;
  for (JournalCall& call : Calls()) {
    if (call.function == function) calls.push_back(std::move(call));
  }
  return calls;
}

std::vector<std::string> Contract::CalledFunctions() {
  std::vector<std::string> functions;
  for (const JournalCall& call : Calls()) {
    if (call.function.rfind("Com_", 0) != 0 && call.function.rfind("Link_", 0) != 0) {
      functions.push_back(call.function);
    }
  }
  return functions;
}

void Contract::ForgetCalls() { firstCall = strict::Core().Strict_CallCount(); }

}  // namespace quillmar::contract
