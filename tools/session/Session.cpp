#include "session/Session.h"

#include <fmt/format.h>

#include <algorithm>
#include <thread>

#include "common/Place.h"
#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/Messages.h"

namespace session {
namespace {

constexpr const char* kAddinName = "Drawboard.dll";
constexpr const char* kModelFolder = "Drawboard";
constexpr const char* kPartExtension = "dbp";
constexpr const char* kFeatureExtension = "dbf";
constexpr const char* kSettingsName = "Drawboard";

// Toolbar commands, and shared parts that keep their identity at a change.
constexpr int kShowFlag = 0x10 | 0x40;
constexpr int kModelFileKind = 1;
constexpr int kDxfDrawings = 2;

// When the CAD complained this long ago, what is waited for will not come.
constexpr auto kHopelessAfter = std::chrono::seconds(1);
constexpr auto kPumpInterval = std::chrono::milliseconds(5);

std::string Utf8(const std::string& bytes) { return drawboard::ToUtf8(bytes); }

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
  for (const Calculation& calculation : job.calculations) Start(calculation);
  for (const Change& change : job.changes) Apply(change);
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

void Session::Start(const Calculation& calculation) {
  const std::string what = fmt::format("The calculation \"{}\"", Utf8(calculation.name));
  const std::string order = orders.Write(calculation.calculation, {}, calculation.inputs);
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
  std::vector<std::string>& names = parts[calculation.name];
  const DocumentJson document = Document();
  for (const std::string& id : protocols) {
    for (std::string& name : ObjectsOfProtocol(document, id)) names.push_back(std::move(name));
  }
  tell(fmt::format("\"{}\" is calculated; in the CAD stand {}", Utf8(calculation.name),
                   ListOf(names)));
}

// As a user does who opens the calculation behind a part: the add-in hands the part's protocol to
// the module, then lets the host show it.
void Session::Apply(const Change& change) {
  const std::string what = fmt::format("The change of \"{}\"", Utf8(change.name));
  const std::vector<std::string>& names = parts[change.name];
  const auto calculation =
      std::find_if(job.calculations.begin(), job.calculations.end(),
                   [&](const Calculation& each) { return each.name == change.name; });
  const DocumentJson before = Document();
  const std::string protocolId = ProtocolOf(before, names.front());
  const std::string order = orders.Write(calculation->calculation, protocolId, change.inputs);
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
    quillmar::platform::PumpMessages();
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
