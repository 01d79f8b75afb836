// What every contract test stands on: an installation, the finished library loaded from it, an
// add-in, and the journal of what reached them.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "CoreLink.h"
#include "HostSide.h"
#include "Machine.h"
#include "Records.h"
#include "platform/Modules.h"
#include "quillmar/Exports.h"

namespace quillmar::contract {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// Whether the program lies in the image of the strict companions, whose libraries keep the journal;
// in the suite's image the add-in alone keeps it.
extern const bool kStrictCompanions;

#define CONTRACT_MEMBER(name, convention, result, parameters, arguments) \
  result(convention* name) parameters = nullptr;
struct Exports {
  QM_EXPORTS(CONTRACT_MEMBER)
};
#undef CONTRACT_MEMBER

// Arguments of LoginCad that a test changes one by one.
struct LoginArguments {
  const char* cadModuleName = "Strictcad.dll";
  int showFlag = 0x11;
  int modelFileKind = 1;
  const char* modelDirName = "models";
  const char* modelExt = "prt";
  const char* featureExt = "fea";
  const char* settingsName = "Strict";
};

struct JournalCall {
  std::string function;
  std::vector<std::string> arguments;
  int result;
};

class Contract : public testing::Test {
 protected:
  // Options and session values of a fresh installation, and no start-up program.
  Contract();
  // No promise was broken.
  ~Contract() override;

  // Loads the library and binds its exports; false when the system refused it.
  bool LoadModule();
  void UnloadModule();
  // Loads an add-in by its path below the add-in's folder.
  QmModule LoadCad(const std::string& file = "Strictcad.dll");
  int Login(const LoginArguments& arguments = {});
  // Module, add-in (another than the whole one lies in "Lacking") and a session in which everything
  // succeeded, with a running host.
  void StartSession(const LoginArguments& arguments = {});

  // All calls since the last ForgetCalls, and those of one function.
  static std::vector<JournalCall> Calls();
  static std::vector<JournalCall> Calls(const std::string& function);
  // Names of all functions called since the last ForgetCalls that are no storage, link
  // or host functions.
  static std::vector<std::string> CalledFunctions();
  static void ForgetCalls();
  // Number of the first entry of the journal since then.
  static int FirstCall() { return firstCall; }

  Exports module;
  platform::Library loaded;
  HostSide host;
  int status = -1;  // what the last Login received

 private:
  std::vector<platform::Library> addIns;
  static int firstCall;
};

}  // namespace quillmar::contract
