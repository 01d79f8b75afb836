// User parts: the model becomes a template for the data wizard, and an object carries its protocol.
#include <fmt/format.h>

#include "drawboard/CodePage.h"
#include "platform/Profile.h"
#include "session/Session.h"
#include "session/UserDialog.h"

namespace session {
namespace {

namespace platform = quillmar::platform;
using drawboard::ToUtf8;

constexpr const char* kDataWizard = "Datrova";
constexpr std::size_t kValueSize = 1024;
constexpr std::size_t kReferenceRoom = 65536;

std::string RecordOf(const std::string& drive, const char* program) {
  return drive + "\\Vantorel\\Fendrake\\" + program + ".ini";
}

}  // namespace

int Session::RunsOf(const char* program) const {
  return platform::ReadProfileInt(RecordOf(setup.drive, program), "Runs", "Count", 0);
}

void Session::AwaitRun(const char* program, int runsBefore) {
  const std::string record = RecordOf(setup.drive, program);
  if (!PumpUntil([&] { return RunsOf(program) > runsBefore; }, [] { return false; })) {
    Fail(fmt::format("{} was not started, or has not ended", program));
  }
  const std::string run = std::to_string(runsBefore + 1);
  const auto value = [&](const char* key) {
    return ToUtf8(platform::ReadProfileText(record, run.c_str(), key, "", kValueSize));
  };
  Note(fmt::format("{} was given {}", program, value("Parameter")));
  records.back().files.push_back(value("Parameter"));
  if (value("Result") != "Accepted") {
    Fail(fmt::format("{} refused what it was given: {}", program, value("Message")));
  }
}

void Session::Perform(const UserPart& part) {
  if (const Names standing = Standing(part.objects); !standing.empty()) {
    Done(fmt::format("The user part {} stands in the CAD as it is", ListOf(standing)));
    return Leave({}, standing, false);
  }
  const int before = RunsOf(kDataWizard);
  const bool lisp = part.description == UserPart::Description::Lisp;
  cad.call.Drawboard_AnswerPoint(part.x, part.y, 0);
  {
    const UserDialog user(part.name, part.views, part.units);
    Require(lisp ? Call("AddUTPart", {}, [&] { return module->call.AddUTPart(); })
                 : Call("AddUTDXFPart", {}, [&] { return module->call.AddUTDXFPart(); }),
            "The user part was not made");
  }
  AwaitRun(kDataWizard, before);
  char protocolId[260] = {};
  std::string reference(kReferenceRoom, '\0');
  Require(Call("CreateUserProtocol", fmt::format("\"{}\"", ToUtf8(part.name)),
               [&] {
                 return module->call.CreateUserProtocol(protocolId, reference.data(),
                                                        part.name.c_str());
               }),
          "CreateUserProtocol failed");
  const DocumentJson document = Document();
  Require(cad.call.Drawboard_Place("part", part.name.c_str(), reference.c_str()),
          "The CAD cannot place the user part");
  const Names objects = NewObjects(document);
  Done(fmt::format("The model is the user part \"{}\" for the data wizard; in the CAD stands {}",
                   ToUtf8(part.name), ListOf(objects)));
  Leave({}, objects, true);
}

}  // namespace session
