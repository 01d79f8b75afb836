// Steps that concern several calculations: groups, the assembly, links, the group manager.
#include <fmt/format.h>

#include <algorithm>

#include "drawboard/CodePage.h"
#include "platform/Processes.h"
#include "session/Session.h"

namespace session {
namespace {

using drawboard::FromUtf8;
using drawboard::ToUtf8;

constexpr const char* kGroupDataFile = "xtalvek";
constexpr const char* kGroupKind = "named protocol";
constexpr const char* kAssemblyKind = "assembly";
constexpr int kConnectAssembly = 9;  // of CallUTFunction
constexpr const char* kGroupManager = "Grupova";

// The name, then each member with the fields of its calculation.
Inputs GroupInputs(const Job& job, const Group& group) {
  Inputs inputs = {{"Name", group.name}};
  for (std::size_t i = 0; i < group.members.size(); ++i) {
    const std::string member = fmt::format("Member{}", i + 1);
    inputs.emplace_back(member, group.members[i].calculation);
    if (job.unit == "in") inputs.emplace_back(member + ".units", "1");
    for (const auto& [name, value] : group.members[i].inputs) {
      inputs.emplace_back(member + "." + name, value);
    }
  }
  return inputs;
}

// The group's own object stands first.
void PutGroupFirst(const DocumentJson& document, std::vector<std::string>& names) {
  std::stable_partition(names.begin(), names.end(), [&](const std::string& name) {
    return KindOf(document, name) == kGroupKind;
  });
}

}  // namespace

void Session::Perform(const Group& group) {
  const Inputs inputs = GroupInputs(job, group);
  if (Names standing = Standing(group.objects); !standing.empty()) {
    const DocumentJson before = Document();
    PutGroupFirst(before, standing);
    const std::string order = Order(kGroupDataFile, ProtocolOf(before, standing.front()), inputs);
    ShowCalculationOf(standing);
    AwaitAnswer(order);
    AwaitChanges(before, Names(standing.begin() + 1, standing.end()));
    Done(fmt::format("The group \"{}\" is recalculated; updated in the CAD are {}",
                     ToUtf8(group.name), ListOf(standing)));
    return Leave(kGroupDataFile, standing, false);
  }
  const DocumentJson before = Document();
  const std::string order = Order(kGroupDataFile, {}, inputs);
  Call("StartCalculation", fmt::format("\"{}\", \"ISO\"", kGroupDataFile), [&] {
    module->call.StartCalculation(kGroupDataFile, "ISO");
    return 1;
  });
  const Names protocols = AwaitAnswer(order);
  AwaitDocument("Its members do not all stand in the CAD", [&](const DocumentJson& document) {
    return std::all_of(protocols.begin(), protocols.end(), [&](const std::string& id) {
      return !ObjectsOfProtocol(document, id).empty();
    });
  });
  Names objects = NewObjects(before);
  PutGroupFirst(Document(), objects);
  Done(fmt::format("The group \"{}\" of {} protocols stands in the CAD with {}", ToUtf8(group.name),
                   protocols.size() - 1, ListOf(objects)));
  Leave(kGroupDataFile, std::move(objects), true);
}

void Session::Perform(const Assembly&) {
  const DocumentJson before = Document();
  if (const auto standing = ObjectOfKind(before, kAssemblyKind)) {
    Done(fmt::format("The assembly \"{}\" has its protocol already", *standing));
    return Leave({}, {*standing}, false);
  }
  Call("CallUTFunction", std::to_string(kConnectAssembly),
       [&] { return module->call.CallUTFunction(kConnectAssembly); });
  const Names objects = AwaitNewObjects(before, "The assembly got no protocol");
  char path[1024] = {};
  Call("GetAssemblyPath", {}, [&] { return module->call.GetAssemblyPath(path); });
  Note(fmt::format("The add-in says that it is {}", ToUtf8(path)));
  Done(fmt::format("The assembly {} has a protocol now", ListOf(objects)));
  Leave({}, objects, true);
}

void Session::RefreshAll(const char* function, const std::function<int()>& refresh,
                         const std::string& nothing, const std::string& done) {
  const DocumentJson before = Document();
  Require(Call(function, {}, refresh), fmt::format("{} failed", function));
  PumpUntil([] { return true; }, [] { return false; });
  const DocumentJson after = Document();
  Names updated;
  for (const DocumentJson& object : after["objects"]) {
    const std::string name = object["name"].get<std::string>();
    if (ChangesOf(after, name) > ChangesOf(before, name)) updated.push_back(name);
  }
  Done(updated.empty() ? nothing
                       : fmt::format("{}; updated in the CAD are {}", done, ListOf(updated)));
  Leave({}, std::move(updated), false);
}

void Session::Perform(const LinkRefresh&) {
  RefreshAll(
      "RefreshAllLinks", [&] { return module->call.RefreshAllLinks(); },
      "No object in the CAD is linked", "Links are refreshed");
}

void Session::Perform(const BillRefresh&) {
  RefreshAll(
      "UpdateExtendedData", [&] { return module->call.UpdateExtendedData(); },
      "No part in the CAD stands in a bill of materials", "The bill of materials is refreshed");
}

void Session::Perform(const GroupManager& step) {
  const Names& objects = started[step.name].objects;
  const std::string id = ProtocolOf(Document(), objects.front());
  // Protocols are in the store only while somebody works with them: the add-in hands them over.
  for (const std::string& object : objects) Obtain(object);
  const int before = RunsOf(kGroupManager);
  const std::string folder = setup.drive + "\\Vantorel\\Fendrake";
  const std::string program = folder + "\\" + kGroupManager + ".exe";
  if (!quillmar::platform::StartProgram(
          {.program = program, .commandLine = program + " " + id, .folder = folder})) {
    Fail(program + " cannot be started");
  }
  AwaitRun(kGroupManager, before);
  Done(fmt::format("The group manager has logged in, solved the group \"{}\" and logged out",
                   ToUtf8(step.name)));
}

}  // namespace session
