#include "hexaplan/host/HostObject.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "hexaplan/host/Copies.h"
#include "hexaplan/host/DrawingFile.h"
#include "platform/Messages.h"
#include "quillmar/CalculationHost.h"
#include "recorder/Recorder.h"

namespace hexaplan {

namespace {

namespace platform = quillmar::platform;
namespace recorder = quillmar::recorder;
using platform::AutomationArguments;
using platform::AutomationResult;
using platform::AutomationStatus;
using platform::AutomationValue;

// The notification that asks the host to end, and the item of its protocol that says whether.
constexpr int kExitRequest = 5000;
constexpr char kExitItem[] = "Exit";
constexpr int kExitTries = 100;
constexpr std::chrono::milliseconds kExitPause(50);

// Folder of the library models, below the folder of the suite's maker.
constexpr char kModelsFolder[] = "Models\\";

constexpr recorder::Border kBorder{"Hexaplan", recorder::Kind::Host};

// What crosses the border, in a form that the recorder can describe.
struct CallArguments {
  const AutomationArguments& values;
};
struct CallAnswer {
  AutomationResult result;
};

std::string Describe(const AutomationValue& value, std::size_t limit) {
  struct Text {
    std::size_t limit;
    std::string operator()(platform::NoValue) const { return "nothing"; }
    std::string operator()(int number) const { return std::to_string(number); }
    std::string operator()(std::int16_t number) const { return std::to_string(number); }
    std::string operator()(bool flag) const { return flag ? "true" : "false"; }
    std::string operator()(const std::string& text) const {
      return recorder::DescribeText(text, limit);
    }
  };
  return std::visit(Text{limit}, value);
}

[[maybe_unused]] std::string Describe(const CallArguments& arguments, std::size_t limit) {
  std::string text;
  for (const AutomationValue& value : arguments.values) {
    text += (text.empty() ? "" : ", ") + Describe(value, limit);
  }
  return text;
}

[[maybe_unused]] std::string Describe(const CallAnswer& answer, std::size_t limit) {
  switch (answer.result.status) {
    case AutomationStatus::Done:
      return Describe(answer.result.value, limit);
    case AutomationStatus::Raised:
      return "raised: " + answer.result.description;
    case AutomationStatus::UnknownMember:
      return "unknown member";
    case AutomationStatus::ServerGone:
      return "gone";
    case AutomationStatus::Failed:
      break;
  }
  return "failed";
}

AutomationResult Failed(AutomationStatus status, std::string description = {}) {
  AutomationResult result;
  result.status = status;
  result.description = std::move(description);
  return result;
}

const std::string& Text(const AutomationArguments& arguments, std::size_t index) {
  return std::get<std::string>(arguments[index]);
}

int Number(const AutomationArguments& arguments, std::size_t index) {
  return std::get<int>(arguments[index]);
}

std::string ParentFolder(const std::string& folder) {
  const auto bar = folder.rfind('\\');
  return bar == std::string::npos ? std::string() : folder.substr(0, bar + 1);
}

}  // namespace

// `arguments` has a letter for each: t text, n number.
struct HostObject::Method {
  int identifier;
  const char* name;         // in the record of calls
  const char* offeredName;  // by which clients look it up; null: by identifier only
  const char* arguments;
  Value (HostObject::*run)(const Arguments&);
};

const HostObject::Method HostObject::kMethods[] = {
    {QM_HOST_SHOW_CALCULATION, "ShowCalculation", nullptr, "t", &HostObject::ShowCalculation},
    {QM_HOST_CALLBACK_CODE, "CallbackCode", nullptr, "", &HostObject::CallbackCode},
    {QM_HOST_CALLBACK_LIST, "CallbackList", nullptr, "", &HostObject::CallbackList},
    {QM_HOST_IS_READY, "IsReady", nullptr, "", &HostObject::IsReady},
    {QM_HOST_COMMAND, "Command", nullptr, "n", &HostObject::Command},
    {QM_HOST_WRITE_FILE, "WriteFile", nullptr, "tn", &HostObject::WriteFile},
    {QM_HOST_RUN_COMMAND, "RunCommand", nullptr, "t", &HostObject::RunCommand},
    {QM_HOST_SESSION, "Session", nullptr, "nttt", &HostObject::Session},
    {QM_HOST_SHOW_FLAG, "ShowFlag", nullptr, "n", &HostObject::ShowFlag},
    {QM_HOST_COMPANION_FOLDER, "CompanionFolder", nullptr, "", &HostObject::CompanionFolder},
    {QM_HOST_SETTINGS_NAME, "SettingsName", nullptr, "t", &HostObject::SettingsName},
    {QM_HOST_ANNOUNCE, "Announce", nullptr, "t", &HostObject::Announce},
    {QM_HOST_SOLVE_ONE_LINK, "SolveOneLink", nullptr, "tt", &HostObject::SolveOneLink},
    {QM_HOST_INIT_SOLUTION, "InitSolution", nullptr, "t", &HostObject::InitSolution},
    {QM_HOST_DRAWN, "Drawn", nullptr, "t", &HostObject::Drawn},
    {QM_HOST_END_SOLUTION, "EndSolution", nullptr, "", &HostObject::EndSolution},
    {QM_HOST_SYNCHRONIZE, "Synchronize", nullptr, "tn", &HostObject::Synchronize},
    {QM_HOST_EDIT_ONE_LINK, "EditOneLink", nullptr, "tt", &HostObject::EditLinks},
    {QM_HOST_EDIT_LINKS, "EditLinks", nullptr, "t", &HostObject::EditLinks},
    {QM_HOST_SET_CAD_SPECIFIC, "SetCadSpecific", QM_HOST_NAME_SET_CAD_SPECIFIC, "tt",
     &HostObject::SetCadSpecific},
    {QM_HOST_UPDATE_ALL, "UpdateAll", nullptr, "", &HostObject::UpdateAll},
    {QM_HOST_SET_SMART_MODE, "SetSmartMode", QM_HOST_NAME_SET_SMART_MODE, "n",
     &HostObject::SetSmartMode},
    {QM_HOST_SET_CAD_WINDOW, "SetCADHwnd", QM_HOST_NAME_SET_CAD_WINDOW, "n",
     &HostObject::SetCadWindow},
    {QM_HOST_FAMILY_TABLE, "GenerateFamTable", QM_HOST_NAME_FAMILY_TABLE, "tt",
     &HostObject::FamilyTable},
    {QM_HOST_UPDATE_EXT_DATA, "UpdateExtData", QM_HOST_NAME_UPDATE_EXT_DATA, "tn",
     &HostObject::UpdateExtData},
};

HostObject::HostObject(const std::string& folder, const ProtocolStore& store, HostProcess process)
    : folder(folder),
      store(store),
      process(std::move(process)),
      faults(folder),
      calculations(store, Orders(folder + "\\Inputs"), ParentFolder(folder) + kModelsFolder),
      groups(store, calculations) {}

HostObject::~HostObject() {
  if (exitTimer != 0) platform::StopTimer(exitTimer);
}

const HostObject::Method* HostObject::FindMethod(int identifier) {
  const auto found = std::find_if(std::begin(kMethods), std::end(kMethods),
                                  [&](const Method& m) { return m.identifier == identifier; });
  return found != std::end(kMethods) ? found : nullptr;
}

std::optional<int> HostObject::FindMember(const std::string& name) const {
  for (const Method& method : kMethods) {
    if (method.offeredName != nullptr && name == method.offeredName) return method.identifier;
  }
  return std::nullopt;
}

AutomationResult HostObject::Call(int identifier, const AutomationArguments& arguments) {
  const Method* method = FindMethod(identifier);
  if (method == nullptr) return Failed(AutomationStatus::UnknownMember);
  bool fit = arguments.size() == std::char_traits<char>::length(method->arguments);
  for (std::size_t i = 0; fit && i < arguments.size(); ++i) {
    fit = method->arguments[i] == 't' ? std::holds_alternative<std::string>(arguments[i])
                                      : std::holds_alternative<int>(arguments[i]);
  }
  if (!fit) return Failed(AutomationStatus::Failed);

  const auto run = [&]() -> CallAnswer {
    if (faults.DiesIn(identifier)) {
      process.die();
      return {Failed(AutomationStatus::ServerGone)};
    }
    AutomationResult result;
    result.value = (this->*method->run)(arguments);
    result.status = AutomationStatus::Done;
    return {std::move(result)};
  };
  const CallArguments described{arguments};
  const CallAnswer failure{Failed(AutomationStatus::Raised, "The calculation host failed.")};
  return kBorder
      .Call(method->name, recorder::Caller::Named("Quillmar"), run, failure, std::tie(described))
      .result;
}

void HostObject::OnNotification(int number, const std::string& protocolId) {
  if (number != kExitRequest) return;
  exitRequests.push_back({protocolId, kExitTries});
  HandleExitRequests();
}

// Sessions that end one after the other, such as that of the group manager and the CAD's own, may
// ask within one pause. Each request is answered before any of them ends the process.
void HostObject::HandleExitRequests() {
  bool ends = false;
  for (auto request = exitRequests.begin(); request != exitRequests.end();) {
    const std::string answer = ExitAnswer(request->protocolId);
    // The sender closes the protocol, and so stores it, only after it has sent the notification.
    if (answer.empty() && request->tries-- > 0) {
      ++request;
      continue;
    }
    if (!answer.empty()) {
      // It was made for this notification alone.
      store.Erase(request->protocolId);
      session = {};
      finished.clear();
      ends = ends || answer == "1";
    }
    request = exitRequests.erase(request);
  }
  if (ends) {
    // This object may be gone when that returns.
    const auto endProcess = process.end;
    endProcess();
  } else if (!exitRequests.empty() && exitTimer == 0) {
    exitTimer = platform::StartTimer(kExitPause, [this](std::uintptr_t) {
      exitTimer = 0;
      HandleExitRequests();
    });
  }
}

std::string HostObject::ExitAnswer(const std::string& protocolId) const {
  const auto record = ProtocolRecord::Open(store, protocolId);
  return record ? record->Global(kExitItem) : std::string();
}

int HostObject::Show(const std::string& protocolId, RunReason reason) {
  const bool group = groups.IsGroup(protocolId);
  RunResult result = group ? groups.Run(protocolId) : calculations.Run(protocolId, reason);
  if (result.olderLayout && reason == RunReason::Shown) {
    unconverted.push_back(protocolId);
    Report({QM_CALLBACK_FROM_REFERENCE, {protocolId}});
  }
  if (result.calculated) {
    for (const std::string& id : result.protocols) {
      if (std::find(calculated.begin(), calculated.end(), id) == calculated.end()) {
        calculated.push_back(id);
      }
    }
    Report({result.code, std::move(result.protocols)});
  }
  return result.shown ? 1 : 0;
}

// One message for each result. Without a window nobody asks in turn, and the newest counts.
void HostObject::Report(Finished result) {
  const bool told = platform::PostToWindow(session.callbackWindow,
                                           platform::RegisterMessage(QM_MESSAGE_CALLBACK));
  if (!told) finished.clear();
  if (firstAnswered && !finished.empty()) finished.pop_front();
  firstAnswered = false;
  finished.push_back(std::move(result));
}

int HostObject::Recalculate(const std::string& protocolId) {
  return calculations.Run(protocolId, RunReason::Silent).calculated ? 1 : 0;
}

AutomationValue HostObject::ShowCalculation(const Arguments& arguments) {
  return Show(Text(arguments, 0), RunReason::Shown);
}

AutomationValue HostObject::RunCommand(const Arguments& arguments) {
  return Show(Text(arguments, 0), RunReason::Commanded);
}

// The CAD side asks for the code first, then for the list.
AutomationValue HostObject::CallbackCode(const Arguments&) {
  if (firstAnswered && finished.size() > 1) {
    finished.pop_front();
    firstAnswered = false;
  }
  return finished.empty() ? 0 : finished.front().code;
}

AutomationValue HostObject::CallbackList(const Arguments&) {
  std::string list;
  if (finished.empty()) return list;
  firstAnswered = true;
  for (const std::string& id : finished.front().protocols) list += (list.empty() ? "" : ",") + id;
  return list;
}

AutomationValue HostObject::IsReady(const Arguments&) { return faults.NeverReady() ? 0 : 1; }

// Other numbers concern calculations that are shown in windows; there are none.
AutomationValue HostObject::Command(const Arguments& arguments) {
  const auto use = static_cast<CopyUse>(Number(arguments, 0));
  if (use != CopyUse::Place && use != CopyUse::Replace) return 1;
  const auto [id, replaced] = TakeUpCopy(store, use);
  if (id.empty()) return 0;
  if (!replaced.empty()) calculations.NoteReplacement(replaced, id);
  const int shown = Show(id, RunReason::Commanded);
  // A copy that cannot be calculated belongs to nobody: no part of the CAD bears it.
  if (std::find(calculated.begin(), calculated.end(), id) == calculated.end()) store.Erase(id);
  return shown;
}

AutomationValue HostObject::WriteFile(const Arguments& arguments) {
  // The caller holds it open while it waits.
  const auto record = ProtocolRecord::OpenShared(store, Text(arguments, 0));
  if (!record) return static_cast<std::int16_t>(0);
  DrawingSettings settings;
  settings.layersFile = record->KeyWord("Files", "Layers");
  double overlap = 0;
  if (ParseNumber(record->KeyWord("LTParam", "AxisLenght"), overlap)) {  // the module's spelling
    settings.axisOverlap = overlap;
  }
  const bool written = WriteDrawing(record->KeyWord("Files", "Output"), record->DataFileType(),
                                    record->Parameters(), settings);
  return static_cast<std::int16_t>(written ? 1 : 0);
}

AutomationValue HostObject::Session(const Arguments& arguments) {
  session.mode = Number(arguments, 0);
  session.callbackWindow =
      static_cast<QmWindow>(std::strtoll(Text(arguments, 1).c_str(), nullptr, 10));
  session.versionText = Text(arguments, 2);
  session.kindText = Text(arguments, 3);
  return {};
}

AutomationValue HostObject::ShowFlag(const Arguments& arguments) {
  session.showFlag = Number(arguments, 0);
  return 1;
}

AutomationValue HostObject::CompanionFolder(const Arguments&) { return folder; }

AutomationValue HostObject::SettingsName(const Arguments& arguments) {
  session.settingsName = Text(arguments, 0);
  return 1;
}

AutomationValue HostObject::Announce(const Arguments& arguments) {
  calculations.CompleteView(Text(arguments, 0));
  return store.Exists(Text(arguments, 0)) ? 1 : 0;
}

AutomationValue HostObject::InitSolution(const Arguments& arguments) {
  solving = store.Exists(Text(arguments, 0));
  return solving ? 1 : 0;
}

AutomationValue HostObject::SolveOneLink(const Arguments& arguments) {
  return solving ? Recalculate(Text(arguments, 0)) : 0;
}

AutomationValue HostObject::EndSolution(const Arguments&) {
  solving = false;
  return {};
}

void HostObject::GoOnAfterConversion(const std::string& protocolId) {
  std::vector<std::string> waiting;
  std::swap(waiting, unconverted);
  for (const std::string& id : waiting) {
    if (protocolId.empty() || id == protocolId) {
      Show(id, RunReason::Commanded);
    } else {
      unconverted.push_back(id);
    }
  }
}

AutomationValue HostObject::Drawn(const Arguments& arguments) {
  GoOnAfterConversion(Text(arguments, 0));
  return 1;
}

AutomationValue HostObject::Synchronize(const Arguments& arguments) {
  return Recalculate(Text(arguments, 0));
}

// Links are edited in a dialog; with nobody there to use it they stay as they are.
AutomationValue HostObject::EditLinks(const Arguments& arguments) {
  return store.Exists(Text(arguments, 0)) ? 1 : 0;
}

AutomationValue HostObject::SetCadSpecific(const Arguments& arguments) {
  session.modelFolderName = Text(arguments, 0);
  session.modelExtensions = Text(arguments, 1);
  return 1;
}

AutomationValue HostObject::UpdateAll(const Arguments&) {
  for (const std::string& id : calculated) Recalculate(id);
  return {};
}

AutomationValue HostObject::SetSmartMode(const Arguments& arguments) {
  session.smartMode = Number(arguments, 0);
  return {};
}

AutomationValue HostObject::SetCadWindow(const Arguments& arguments) {
  session.cadWindow = static_cast<QmWindow>(Number(arguments, 0));
  return 1;
}

AutomationValue HostObject::FamilyTable(const Arguments& arguments) {
  return store.Exists(Text(arguments, 0)) ? 1 : 0;
}

AutomationValue HostObject::UpdateExtData(const Arguments& arguments) {
  return Recalculate(Text(arguments, 0)) == 1;
}

}  // namespace hexaplan
