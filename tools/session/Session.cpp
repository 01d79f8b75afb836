#include "session/Session.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <thread>

#include "common/Place.h"
#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/Automation.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Registry.h"
#include "quillmar/CalculationHost.h"

namespace session {
namespace {

namespace platform = quillmar::platform;
using drawboard::ToUtf8;

constexpr const char* kAddinName = "Drawboard.dll";
constexpr const char* kModelFolder = "Drawboard";
constexpr const char* kPartExtension = "dbp";
constexpr const char* kFeatureExtension = "dbf";
constexpr const char* kSettingsName = "Drawboard";
constexpr const char* kModuleKey =
    "Software\\Kestrova\\Vantorel\\RegistryVersion11.0\\Brastolinex\\";
constexpr const char* kWorkspace = "\\Drawboard\\Workspace";

// Toolbar commands, and shared parts that keep their identity at a change.
constexpr int kShowFlag = 0x10 | 0x40;
constexpr int kModelFileKind = 1;
constexpr int kDxfDrawings = 2;
constexpr int kFacetModels = 7;
// Calculations of whose parts the host writes the body.
constexpr const char* kModelCalculations[] = {"SLEEVE"};

// When the CAD complained this long ago, what is waited for will not come.
constexpr auto kHopelessAfter = std::chrono::seconds(1);
constexpr auto kLongestFarewell = std::chrono::seconds(3);
constexpr auto kPumpInterval = std::chrono::milliseconds(5);

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
    return fmt::format("\"{}\"", ToUtf8(*text));
  }
  return std::to_string(std::get<std::uint32_t>(setting.value));
}

// What the job gives a step, as it is shown. Options are told one by one as they are written.
Inputs GivenTo(const auto& step) {
  if constexpr (requires { step.inputs; }) return step.inputs;
  return {};
}
Inputs GivenTo(const OldPart& step) { return step.values; }
Inputs GivenTo(const Format& step) {
  return {{"standard", step.standard}, {"scale", fmt::format("{}", step.scale)}};
}
Inputs GivenTo(const UserPart& step) {
  return {{"views", step.views},
          {"unit", step.units == 0 ? "mm" : "in"},
          {"x", fmt::format("{}", step.x)},
          {"y", fmt::format("{}", step.y)}};
}
Inputs GivenTo(const Group& step) {
  Inputs given;
  for (const Group::Member& member : step.members) {
    given.emplace_back("calculation", member.calculation);
    given.insert(given.end(), member.inputs.begin(), member.inputs.end());
  }
  return given;
}

std::vector<std::pair<std::string, std::string>> InputsOf(const Step& step) {
  std::vector<std::pair<std::string, std::string>> inputs;
  for (const auto& [name, value] :
       std::visit([](const auto& kind) { return GivenTo(kind); }, step)) {
    inputs.emplace_back(ToUtf8(name), ToUtf8(value));
  }
  return inputs;
}

bool Has(const DocumentJson& document, const std::string& name) {
  return ChangesOf(document, name) >= 0;
}

}  // namespace

std::string ListOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "\"" : ", \"") + name + "\"";
  return text;
}

Session::Session(const Job& job, const SessionSetup& setup, SessionWatcher watcher)
    : job(job),
      setup(setup),
      watcher(std::move(watcher)),
      timeline(tools::SystemPath(setup.drive + "\\Vantorel\\Trace")),
      orders(setup.drive + "\\Vantorel\\Fendrake\\Inputs"),
      cad(setup.drive + "\\Drawboard\\" + kAddinName) {}

SessionData Session::Data() const {
  return {ToUtf8(job.name), records, timeline.Calls(), documentText};
}

// --- the course of it ---

void Session::Run() {
  try {
    RunSteps();
  } catch (const SessionInterrupted&) {
    KeepDocument();
    if (module) LogOut();
    throw;
  } catch (...) {
    cad.call.Drawboard_SaveDocument("");  // whoever looks for the fault sees what stands there
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
  for (const Step& step : job.steps) RunStep(step);
  LogOut();
  SaveDocument();
}

// As the designer does at the end of his work; the CAD then also writes what others open, which
// takes as long as many steps.
void Session::SaveDocument() {
  cad.call.Drawboard_WatchSaving(&Session::OnSaving, this);
  const int saved = cad.call.Drawboard_SaveDocument("");
  cad.call.Drawboard_WatchSaving(nullptr, nullptr);
  if (saved == 0 && watcher.interrupted && watcher.interrupted()) throw SessionInterrupted();
  Require(saved, "The CAD cannot save the document");
  if (watcher.tell) watcher.tell("The CAD has saved the document");
}

int Session::OnSaving(void* session, int made, int count, const char* name) {
  const SessionWatcher& watcher = static_cast<const Session*>(session)->watcher;
  if (watcher.progress) {
    watcher.progress(static_cast<std::size_t>(made) + 1, static_cast<std::size_t>(count),
                     fmt::format("saving {}", ToUtf8(name)));
  }
  return watcher.interrupted && watcher.interrupted() ? 0 : 1;
}

void Session::RunStep(const Step& step) {
  StepRecord& record = records.emplace_back();
  record.kind = WordOf(step);
  record.name = ToUtf8(NameOf(step));
  record.title = TitleOf(step);
  record.inputs = InputsOf(step);
  record.begin = timeline.Now();
  timeline.Title(record.title);
  try {
    if (watcher.interrupted && watcher.interrupted()) throw SessionInterrupted();
    if (const int files = FilesOf(step); files != takenFiles) TakeFiles(files);
    std::visit([&](const auto& kind) { Perform(kind); }, step);
  } catch (const SessionError& error) {
    records.back().failure = error.what();
    records.back().end = timeline.Now();
    throw;
  }
  if (cad.HasMessages()) NoteMessages();
  records.back().end = timeline.Now();
}

// What the CAD had to say although the step succeeded. It must not shorten the waits of later
// steps.
void Session::NoteMessages() {
  std::istringstream lines(cad.TakeMessages());
  for (std::string line; std::getline(lines, line);) Note("The CAD says: " + line);
}

// What an earlier session left in the CAD's folders goes when a new document is begun.
void Session::BeginDocument() {
  const std::string name = ToUtf8(job.document);
  if (setup.continued) {
    const std::string path = setup.drive + kDocuments + "\\" + job.document + ".json";
    if (!platform::FileExists(path)) {
      Fail(fmt::format("There is no document \"{}\" to go on with", name));
    }
    Require(cad.call.Drawboard_OpenDocument(job.document.c_str()),
            "The CAD cannot open the document");
    if (watcher.tell) watcher.tell(fmt::format("The CAD has opened the document \"{}\"", name));
    return;
  }
  for (const char* folder : {kDocuments, kWorkspace}) drawboard::EraseFolder(setup.drive + folder);
  Require(cad.call.Drawboard_NewDocument(job.document.c_str(), job.unit.c_str()),
          "The CAD cannot make the document");
  if (watcher.tell) watcher.tell(fmt::format("The CAD has a new document \"{}\"", name));
}

void Session::LogIn() {
  module.emplace(setup.drive + "\\Vantorel\\Quillmar\\Quillmar.dll");
  int status = 0;
  const int result = Call("LoginCad", fmt::format("\"{}\"", kAddinName), [&] {
    return module->call.LoginCad(kAddinName, kShowFlag, kModelFileKind, kModelFolder,
                                 kPartExtension, kFeatureExtension, kSettingsName, &status);
  });
  Require(result == 1 && status == 1, "LoginCad failed");
  TakeFiles(kDxfDrawings);
  if (watcher.tell) watcher.tell("Logged in");
}

void Session::TakeFiles(int fileType) {
  takenFiles = fileType;
  Require(Call("Set2dFileType", std::to_string(fileType),
               [&] { return module->call.Set2dFileType(fileType); }),
          "Set2dFileType failed");
}

// The module keeps one type for drawings and models.
int Session::FilesOf(const Step& step) {
  std::string calculation = std::visit(
      [](const auto& kind) {
        if constexpr (requires { kind.calculation; }) return kind.calculation;
        return std::string();
      },
      step);
  if (const auto known = started.find(NameOf(step)); known != started.end()) {
    calculation = known->second.calculation;
  }
  // Of all parts only models have files then; drawings are left as they are.
  const bool model = std::holds_alternative<BillRefresh>(step) ||
                     std::find(std::begin(kModelCalculations), std::end(kModelCalculations),
                               calculation) != std::end(kModelCalculations);
  return model ? kFacetModels : kDxfDrawings;
}

void Session::LogOut() {
  Require(Call("LogoutCad", {}, [&] { return module->call.LogoutCad(); }), "LogoutCad failed");
  module.reset();
  AwaitHostEnd();
  if (watcher.tell) watcher.tell("Logged out");
}

// The calculation host ends a moment after the logout has asked it to, unless the options let it
// live. A login before that would find a host that is about to leave.
void Session::AwaitHostEnd() {
  platform::InitializeAutomation();
  const auto start = std::chrono::steady_clock::now();
  while (platform::FindActiveObject(QM_HOST_CLASS_ID) != nullptr &&
         std::chrono::steady_clock::now() - start < kLongestFarewell) {
    platform::PumpMessages();
    std::this_thread::sleep_for(kPumpInterval);
  }
}

void Session::Perform(const Settings& settings) {
  const std::string path = std::string(kModuleKey) + settings.key;
  auto key = platform::CreateKey(platform::Hive::CurrentUser, path);
  if (!key) Fail(fmt::format("The options {} cannot be written", ToUtf8(path)));
  for (const Settings::Value& each : settings.values) {
    if (!Store(*key, each)) {
      Fail(fmt::format("The option {} cannot be written", ToUtf8(each.name)));
    }
    Done(fmt::format("Option {} \"{}\" = {}", ToUtf8(settings.key), ToUtf8(each.name),
                     ValueText(each)));
  }
}

void Session::Perform(const NewLogin&) {
  LogOut();
  LogIn();
}

// --- the step that is carried out ---

void Session::Note(std::string line) { records.back().results.push_back(std::move(line)); }

void Session::Done(const std::string& line) {
  Note(line);
  if (watcher.tell) watcher.tell(line);
}

void Session::Leave(const std::string& calculation, Names objects, bool made) {
  StepRecord& record = records.back();
  record.objects = objects;
  record.made = made;
  if (record.name.empty()) return;
  Started& kept = started[*drawboard::FromUtf8(record.name)];
  if (!calculation.empty()) kept.calculation = calculation;
  kept.objects = std::move(objects);
}

Session::Names Session::Standing(const Names& objects) {
  Names standing;
  if (!setup.continued || objects.empty()) return standing;
  const DocumentJson document = Document();
  for (const std::string& bytes : objects) {
    const std::string name = ToUtf8(bytes);
    if (Has(document, name)) standing.push_back(name);
  }
  return standing;
}

Session::Names Session::NewObjects(const DocumentJson& before) {
  Names names;
  const DocumentJson now = Document();
  for (const DocumentJson& object : now["objects"]) {
    const std::string name = object["name"].get<std::string>();
    if (!Has(before, name)) names.push_back(name);
  }
  return names;
}

Session::Names Session::AwaitNewObjects(const DocumentJson& before, const std::string& expected) {
  Names names;
  AwaitDocument(expected, [&](const DocumentJson&) {
    names = NewObjects(before);
    return !names.empty();
  });
  return names;
}

void Session::Select(const std::string& stepName) {
  std::string name;
  if (!stepName.empty()) name = *drawboard::FromUtf8(started[stepName].objects.front());
  Require(cad.call.Drawboard_Select(name.c_str()), "The CAD cannot select a part");
}

Session::Names Session::AwaitAnswer(const std::string& order) {
  Answer answer;
  const bool answered = PumpUntil(
      [&] {
        answer = Orders::Read(order);
        return answer.result != Answer::Result::Pending;
      },
      [] { return false; });
  if (!answered) Fail("The calculation host does not answer");
  if (answer.result == Answer::Result::Refused) {
    Fail("It was refused by the calculation host: " + ToUtf8(answer.message));
  }
  if (answer.protocols.empty()) Fail("The calculation host named no part");
  return answer.protocols;
}

void Session::AwaitDocument(const std::string& expected,
                            const std::function<bool(const DocumentJson&)>& done) {
  const bool reached =
      PumpUntil([&] { return done(Document()); }, [&] { return cad.HasMessages(); });
  if (!reached) Fail(expected);
}

void Session::AwaitChanges(const DocumentJson& before, const Names& objects) {
  AwaitDocument("Its parts were not updated in the CAD", [&](const DocumentJson& document) {
    return std::all_of(objects.begin(), objects.end(), [&](const std::string& name) {
      return ChangesOf(document, name) > ChangesOf(before, name);
    });
  });
}

bool Session::PumpUntil(const std::function<bool()>& done, const std::function<bool()>& hopeless) {
  const auto start = std::chrono::steady_clock::now();
  for (;;) {
    if (watcher.progress && !records.empty()) {
      watcher.progress(records.size(), job.steps.size(), records.back().title);
    }
    platform::PumpMessages();
    if (done()) return true;
    if (watcher.interrupted && watcher.interrupted()) throw SessionInterrupted();
    const auto waited = std::chrono::steady_clock::now() - start;
    if (waited > setup.patience || (waited > kHopelessAfter && hopeless())) return false;
    std::this_thread::sleep_for(kPumpInterval);
  }
}

DocumentJson Session::Document() { return DocumentJson::parse(cad.DocumentText()); }

void Session::Fail(const std::string& what) {
  const std::string step = records.empty() ? std::string() : records.back().title + "\n";
  const std::string messages = cad.TakeMessages();
  throw SessionError(step + (messages.empty() ? what : what + "\nThe CAD says:\n" + messages));
}

void Session::Require(int result, const std::string& what) {
  if (result == 0) Fail(what);
}

}  // namespace session
