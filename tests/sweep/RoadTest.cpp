#include "RoadTest.h"

#include <map>

#include "platform/Profile.h"

namespace quillmar::contract {
namespace {

constexpr const char* kKeywords[][3] = {
    {"Main", "DataFile", "KEELDATA|SHAFT"},
    {"Cadx", "ReallySmartPart", "1"},
    {"Cadx", "FromCad", "0"},
    {"Cadx", "Loop", "0"},
    {"Cadx", "Optim", "0"},
    {"Cadx", "DoNotErase", "1"},
    {"Object", "CadDescription", "Shaft"},
    {"Object", "ProtID", "OBJ1"},
    {"Grupova", "UseUserDescription", "0"},
    {"Hexaplan", "UpdateAll", "0"},
    {"Hexaplan", "FromSymbols", "0"},
};

constexpr const char* kGlobals[][2] = {
    {"TypeOfPart", "9"},    {"Caption", "Shaft"}, {"Model", "Shaft"},
    {"Path", "C:\\Models"}, {"Changed", "0"},     {"WDOperation", "0"},
};

// What is written stands last in a call and is not looked at here.
const std::map<std::string, std::size_t> kWrittenTexts = {
    {"Com_PutKeyWord", 1}, {"Com_PutGlobalData", 1}, {"Com_PutDataParam", 2},
    {"Com_PutBuffer", 1},  {"Com_PutViewKey", 1},    {"Com_PutModelID", 1},
    {"Link_SetLinkTo", 1}, {"Link_SetLinkFrom", 1}};

std::string StorageLine(int call, const std::string& function) {
  const strict::CoreFunctions& core = strict::Core();
  const auto written = kWrittenTexts.find(function);
  const int count = core.Strict_CallArgumentCount(call) -
                    static_cast<int>(written == kWrittenTexts.end() ? 0 : written->second);
  std::string line = function;
  // The identifier comes first.
  for (int i = 1; i < count; ++i) {
    const std::string argument = core.Strict_CallArgument(call, i);
    if (argument == "out" || argument.starts_with('[')) continue;
    line += (i == 1 ? " " : "|") + argument;
  }
  return line;
}

}  // namespace

RoadTest::RoadTest() {
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
  SetText(Hive::CurrentUser, kModuleKey + "\\Sweep\\OptGeneral2", "LocalFileName", "%CBFName%");
  LoginArguments arguments;
  arguments.settingsName = "Sweep";
  StartSession(arguments);
}

std::string RoadTest::MakeShaft(const std::vector<Keyword>& more) {
  Record record;
  for (const auto& [section, keyword, value] : kKeywords) {
    record.SetKeyWord(section, keyword, value);
  }
  for (const auto& [item, value] : kGlobals) record.SetGlobal(item, value);
  record.SetParameter("mass", "2.5", "kg").SetModelId("Shaft").SetViewKey("MODEL");
  for (const auto& [section, keyword, value] : more) record.SetKeyWord(section, keyword, value);
  return record.Id();
}

void RoadTest::Announce(int code, const std::string& protocolId) {
  host.Announce(code, protocolId);
  ForgetCalls();
  Reports();
}

std::vector<std::string> RoadTest::Lines() {
  std::vector<std::string> lines;
  for (int call = FirstCall(); call < strict::Core().Strict_CallCount(); ++call) {
    const std::string function = strict::Core().Strict_CallFunction(call);
    const bool isStorage = function.starts_with("Com_") || function.starts_with("Link_");
    lines.push_back(isStorage ? StorageLine(call, function) : function);
  }
  return lines;
}

std::vector<std::string> RoadTest::Reports() {
  std::vector<std::string> messages;
  for (const std::string& text : debugger.Take()) {
    // The summary of a failed step ends with a line end, a report does not.
    if (!text.ends_with('\n')) messages.push_back(text.substr(0, text.find('\n')));
  }
  return messages;
}

}  // namespace quillmar::contract
