#include "session/Session.h"

#include <fmt/format.h>

#include <algorithm>
#include <thread>

#include "common/Place.h"
#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/Automation.h"
#include "platform/Messages.h"
#include "platform/Registry.h"
#include "quillmar/CalculationHost.h"

namespace session {
namespace {

namespace platform = quillmar::platform;

constexpr const char* kAddinName = "Drawboard.dll";
constexpr const char* kModelFolder = "Drawboard";
constexpr const char* kPartExtension = "dbp";
constexpr const char* kFeatureExtension = "dbf";
constexpr const char* kSettingsName = "Drawboard";
constexpr const char* kModuleKey =
    "Software\\Kestrova\\Vantorel\\RegistryVersion11.0\\Brastolinex\\";

// Toolbar commands, and shared parts that keep their identity at a change.
constexpr int kShowFlag = 0x10 | 0x40;
constexpr int kModelFileKind = 1;
constexpr int kDxfDrawings = 2;

// When the CAD complained this long ago, what is waited for will not come.
constexpr auto kHopelessAfter = std::chrono::seconds(1);
constexpr auto kPumpInterval = std::chrono::milliseconds(5);

std::string Utf8(const std::string& bytes) { return drawboard::ToUtf8(bytes); }

// Calculations of an inch document have inch inputs, unless the job says otherwise.
Inputs InUnitOf(const Job& job, Inputs inputs) {
  const bool given = std::any_of(inputs.begin(), inputs.end(),
                                 [](const auto& input) { return input.first == "units"; });
  if (job.unit == "in" && !given) inputs.emplace_back("units", "1");
  return inputs;
}

bool Store(platform::RegistryHandle& key, const Settings::Value& setting) {
  if (const auto* text = std::get_if<std::string>(&setting.value)) {
    return key.Set(setting.name, platform::RegistryType::Text, *text + '\0');
  }
  std::uint32_t number = std::get<std::uint32_t>(setting.value);
  std::string bytes;
  for (int i = 0; i < 4; ++i, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return key.Set(setting.name, platform::RegistryType::Dword, bytes);
}

std::string ValueText(const Settings::Value& setting) {
  if (const auto* text = std::get_if<std::string>(&setting.value)) {
    return fmt::format("\"{}\"", Utf8(*text));
  }
  return std::to_string(std::get<std::uint32_t>(setting.value));
}

// What earlier sessions left in the CAD's folders.
void RemoveOldDocuments(const std::string& drive) {
  for (const char* folder : {"\\Drawboard\\Document", "\\Drawboard\\Workspace"}) {
    drawboard::EraseFolder(drive + folder);
  }
}

std::string ListOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "\"" : ", \"") + name + "\"";
  return text;
}

}  // namespace

Session::Session(const Job& job, const SessionSetup& setup,
                 std::function<void(const std::string&)> tell)
    : job(job),
      setup(setup),
      tell(std::move(tell)),
      timeline(tools::SystemPath(setup.drive + "\\Vantorel\\Trace")),
      orders(setup.drive + "\\Vantorel\\Fendrake\\Inputs"),
      cad(setup.drive + "\\Drawboard\\" + kAddinName) {}

void Session::Run() {
  try {
    RunSteps();
  } catch (...) {
    KeepDocument();
    throw;
  }
  documentText = cad.DocumentText();
}

void Session::KeepDocument() {
  try {
    documentText = cad.DocumentText();
  } catch (const SessionError&) {
    documentText.clear();
  }
}

void Session::RunSteps() {
  BeginDocument();
  LogIn();
  for (const Step& step : job.steps) {
    std::visit([&](const auto& kind) { Perform(kind); }, step);
  }
  LogOut();
}

void Session::BeginDocument() {
  RemoveOldDocuments(setup.drive);
  Require(cad.call.Drawboard_NewDocument(job.document.c_str(), job.unit.c_str()),
          "The CAD cannot make the document");
  tell(fmt::format("The CAD has a new document \"{}\"", Utf8(job.document)));
}

void Session::LogIn() {
  module.emplace(setup.drive + "\\Vantorel\\Quillmar\\Quillmar.dll");
  int status = 0;
  const int result = timeline.Call("LoginCad", fmt::format("\"{}\"", kAddinName), [&] {
    return module->call.LoginCad(kAddinName, kShowFlag, kModelFileKind, kModelFolder,
                                 kPartExtension, kFeatureExtension, kSettingsName, &status);
  });
  Require(result == 1 && status == 1, "LoginCad failed");
  Require(timeline.Call("Set2dFileType", std::to_string(kDxfDrawings),
                        [&] { return module->call.Set2dFileType(kDxfDrawings); }),
          "Set2dFileType failed");
  tell("Logged in");
}

void Session::Select(const std::string& calculationName) {
  std::string name;
  if (!calculationName.empty()) {
    name = *drawboard::FromUtf8(started[calculationName].objects.front());
  }
  Require(cad.call.Drawboard_Select(name.c_str()), "The CAD cannot select a part");
}

void Session::Perform(const Calculation& calculation) {
  const std::string what = fmt::format("The calculation \"{}\"", Utf8(calculation.name));
  timeline.Title(fmt::format("{}: calculate {}", Utf8(calculation.name), calculation.calculation));
  Select(calculation.on);
  const std::string order =
      orders.Write(calculation.calculation, {}, InUnitOf(job, calculation.inputs));
  if (order.empty()) Fail(what + ": its inputs cannot be written for the calculation host");
  timeline.Call("StartCalculation",
                fmt::format("\"{}\", \"{}\"", calculation.calculation, Utf8(calculation.standard)),
                [&] {
                  module->call.StartCalculation(calculation.calculation.c_str(),
                                                calculation.standard.c_str());
                  return 1;
                });
  const auto protocols = AwaitAnswer(what, order);
  AwaitDocument(what, "its parts do not stand in the CAD", [&](const DocumentJson& document) {
    return std::all_of(protocols.begin(), protocols.end(), [&](const std::string& id) {
      return !ObjectsOfProtocol(document, id).empty();
    });
  });
  std::vector<std::string>& names = started[calculation.name].objects;
  started[calculation.name].calculation = calculation.calculation;
  const DocumentJson document = Document();
  for (const std::string& id : protocols) {
    for (std::string& name : ObjectsOfProtocol(document, id)) names.push_back(std::move(name));
    for (std::string& name : ViewsOfProtocol(document, id)) names.push_back(std::move(name));
  }
  tell(fmt::format("\"{}\" is calculated; in the CAD stand {}", Utf8(calculation.name),
                   ListOf(names)));
}

// As a user does who opens the calculation behind a part: the add-in hands the part's protocol to
// the module, then lets the host show it.
void Session::Perform(const Change& change) {
  const std::string what = fmt::format("The change of \"{}\"", Utf8(change.name));
  timeline.Title(fmt::format("{}: change inputs", Utf8(change.name)));
  const Started& calculation = started[change.name];
  const std::vector<std::string>& names = calculation.objects;
  const DocumentJson before = Document();
  const std::string protocolId = ProtocolOf(before, names.front());
  const std::string order = orders.Write(calculation.calculation, protocolId, change.inputs);
  if (order.empty()) Fail(what + ": its inputs cannot be written for the calculation host");
  const std::string partName = *drawboard::FromUtf8(names.front());
  Require(timeline.Call("ObtainProtocol", ListOf({names.front()}),
                        [&] { return module->call.ObtainProtocol(partName.c_str()); }),
          what + ": ObtainProtocol failed");
  Require(timeline.Call("ShowDialogUT", fmt::format("\"{}\"", protocolId),
                        [&] { return module->call.ShowDialogUT(protocolId.c_str()); }),
          what + ": ShowDialogUT failed");
  AwaitAnswer(what, order);
  AwaitDocument(what, "its parts were not updated in the CAD", [&](const DocumentJson& document) {
    return std::all_of(names.begin(), names.end(), [&](const std::string& name) {
      return ChangesOf(document, name) > ChangesOf(before, name);
    });
  });
  tell(fmt::format("\"{}\" is recalculated; updated in the CAD are {}", Utf8(change.name),
                   ListOf(names)));
}

void Session::Perform(const Settings& settings) {
  timeline.Title(fmt::format("options of the user: {}", Utf8(settings.key)));
  const std::string path = std::string(kModuleKey) + settings.key;
  auto key = platform::CreateKey(platform::Hive::CurrentUser, path);
  if (!key) Fail(fmt::format("The options {} cannot be written", Utf8(path)));
  for (const Settings::Value& each : settings.values) {
    if (!Store(*key, each)) Fail(fmt::format("The option {} cannot be written", Utf8(each.name)));
    tell(
        fmt::format("Option {} \"{}\" = {}", Utf8(settings.key), Utf8(each.name), ValueText(each)));
  }
}

// The calculation host ends a moment after the logout has asked it to. A login before that would
// find a host that is about to leave.
void Session::Perform(const NewLogin&) {
  timeline.Title("log in again");
  LogOut();
  platform::InitializeAutomation();
  PumpUntil([] { return platform::FindActiveObject(QM_HOST_CLASS_ID) == nullptr; },
            [] { return false; });
  LogIn();
}

void Session::LogOut() {
  Require(timeline.Call("LogoutCad", {}, [&] { return module->call.LogoutCad(); }),
          "LogoutCad failed");
  module.reset();
  tell("Logged out");
}

std::vector<std::string> Session::AwaitAnswer(const std::string& what, const std::string& order) {
  Answer answer;
  const bool answered = PumpUntil(
      [&] {
        answer = Orders::Read(order);
        return answer.result != Answer::Result::Pending;
      },
      [] { return false; });
  if (!answered) Fail(what + ": the calculation host does not answer");
  if (answer.result == Answer::Result::Refused) {
    Fail(what + " was refused by the calculation host: " + Utf8(answer.message));
  }
  if (answer.protocols.empty()) Fail(what + ": the calculation host named no part");
  return answer.protocols;
}

void Session::AwaitDocument(const std::string& what, const std::string& expected,
                            const std::function<bool(const DocumentJson&)>& done) {
  const bool reached =
      PumpUntil([&] { return done(Document()); }, [&] { return cad.HasMessages(); });
  if (!reached) Fail(what + ": " + expected);
}

bool Session::PumpUntil(const std::function<bool()>& done, const std::function<bool()>& hopeless) {
  const auto start = std::chrono::steady_clock::now();
  for (;;) {
    platform::PumpMessages();
    if (done()) return true;
    const auto waited = std::chrono::steady_clock::now() - start;
    if (waited > setup.patience || (waited > kHopelessAfter && hopeless())) return false;
    std::this_thread::sleep_for(kPumpInterval);
  }
}

DocumentJson Session::Document() { return DocumentJson::parse(cad.DocumentText()); }

void Session::Fail(const std::string& what) {
  const std::string messages = cad.TakeMessages();
  throw SessionError(messages.empty() ? what : what + "\nThe CAD says:\n" + messages);
}

void Session::Require(int result, const std::string& what) {
  if (result == 0) Fail(what);
}

}  // namespace session
