// Grupova.exe: stands for the group manager. It logs in to the module as a session of its own, with
// a driver that has no document behind it, lets the host solve the members of the group that it was
// started for, and logs out. It shows nothing; what it did is recorded as the wizards' runs are.
#include <chrono>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/Automation.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "quillmar/CadDriver.h"
#include "quillmar/CalculationHost.h"
#include "quillmar/Exports.h"
#include "recorder/Recorder.h"
#include "wizard/WizardRun.h"

namespace {

namespace platform = quillmar::platform;
using wizard::Refusal;

constexpr quillmar::recorder::Border border{"Grupova", quillmar::recorder::Kind::Driver};

constexpr char kProgram[] = "Grupova.exe";
constexpr char kModule[] = "\\Quillmar\\Quillmar.dll";
constexpr std::size_t kItemSize = 1024;
// Kind of model files; any but -1, which would make it a CAD of its own.
constexpr int kModelFileKind = 0;
constexpr auto kLongestFarewell = std::chrono::milliseconds(500);
constexpr auto kPumpInterval = std::chrono::milliseconds(5);

// The exports that it uses.
struct Module {
  explicit Module(const std::string& path) : library(platform::LoadLibraryAt(path).library) {
    if (!library) throw Refusal(path + " cannot be loaded");
#define GRUPOVA_BIND(name)                                                               \
  name = reinterpret_cast<decltype(name)>(platform::FindFunction(library.Get(), #name)); \
  if (name == nullptr) throw Refusal(path + " lacks the function " #name);
    GRUPOVA_BIND(LoginCad)
    GRUPOVA_BIND(LogoutCad)
    GRUPOVA_BIND(GetProtocolItem)
    GRUPOVA_BIND(InitSolution)
    GRUPOVA_BIND(SolveOneLink)
    GRUPOVA_BIND(EndSolution)
#undef GRUPOVA_BIND
  }

  platform::Library library;
  decltype(&::LoginCad) LoginCad = nullptr;
  decltype(&::LogoutCad) LogoutCad = nullptr;
  decltype(&::GetProtocolItem) GetProtocolItem = nullptr;
  decltype(&::InitSolution) InitSolution = nullptr;
  decltype(&::SolveOneLink) SolveOneLink = nullptr;
  decltype(&::EndSolution) EndSolution = nullptr;
};

std::vector<std::string> Split(const std::string& list) {
  std::vector<std::string> items;
  for (std::size_t begin = 0; begin < list.size();) {
    const auto end = std::min(list.find(';', begin), list.size());
    if (end > begin) items.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  return items;
}

std::vector<std::string> MembersOf(const Module& module, const std::string& group) {
  char order[kItemSize] = {};
  if (module.GetProtocolItem(group.c_str(), "SuperProtocolOrder", "Order", order) == 0) {
    throw Refusal("\"" + group + "\" is no group");
  }
  return Split(order);
}

void Solve(const Module& module, const std::string& group) {
  const std::vector<std::string> members = MembersOf(module, group);
  if (module.InitSolution(group.c_str()) == 0) throw Refusal("The host does not solve the group");
  std::string unsolved;
  for (const std::string& member : members) {
    if (module.SolveOneLink(member.c_str(), "") == 0) unsolved += " " + member;
  }
  module.EndSolution();
  if (!unsolved.empty()) throw Refusal("Not solved:" + unsolved);
}

// The calculation host is asked to leave by a message, which a program that ends at once would not
// let through where host and program are one process. It stays when the options say so.
void LogOut(const Module& module) {
  module.LogoutCad();
  platform::InitializeAutomation();
  const auto begin = std::chrono::steady_clock::now();
  while (platform::FindActiveObject(QM_HOST_CLASS_ID) != nullptr &&
         std::chrono::steady_clock::now() - begin < kLongestFarewell) {
    platform::PumpMessages();
    std::this_thread::sleep_for(kPumpInterval);
  }
}

void ManageGroup(const std::string& group) {
  const std::string folder = wizard::OwnFolder();
  const Module module(folder.substr(0, folder.rfind('\\')) + kModule);
  int status = 0;
  if (module.LoginCad(kProgram, 0, kModelFileKind, "", "", "", "", &status) == 0) {
    throw Refusal("LoginCad failed");
  }
  try {
    Solve(module, group);
  } catch (const Refusal&) {
    LogOut(module);
    throw;
  }
  LogOut(module);
}

}  // namespace

// The group manager has no document: every question to it is answered "no".
namespace grupova_driver {
namespace {
#define GRUPOVA_ANSWER(need, name, result, parameters, arguments) \
  result name parameters {                                        \
    const auto unused = std::tie arguments;                       \
    static_cast<void>(unused);                                    \
    return 0;                                                     \
  }
QM_CAD_FUNCTIONS(GRUPOVA_ANSWER)
QM_CAD_2D_FUNCTIONS(GRUPOVA_ANSWER)
#undef GRUPOVA_ANSWER
}  // namespace
}  // namespace grupova_driver

#define GRUPOVA_EXPORT(need, ...) QM_BORDER_EXPORT(border, grupova_driver, QM_CDECL, __VA_ARGS__)
QM_CAD_FUNCTIONS(GRUPOVA_EXPORT)
QM_CAD_2D_FUNCTIONS(GRUPOVA_EXPORT)

int main(int argumentCount, char** arguments) {
  return wizard::Run("Grupova", wizard::kStartedByUser, argumentCount, arguments, ManageGroup);
}
