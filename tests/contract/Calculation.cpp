#include "Calculation.h"

namespace quillmar::contract {

Calculation::Calculation(const LoginArguments& arguments) {
  const std::string fileNames = kModuleKey + "\\Strict\\OptGeneral2";
  SetText(Hive::CurrentUser, fileNames, "LocalFileName", "%CBFName%");
  SetNumber(Hive::CurrentUser, fileNames, "LocalFolderType", 1);
  SetNumber(Hive::CurrentUser, fileNames, "LocalStructure", 0);
  SetText(Hive::CurrentUser, fileNames, "SharedFileName", "%CBFName% %BOM2%");
  SetNumber(Hive::CurrentUser, fileNames, "SharedFolderType", 4);
  SetNumber(Hive::CurrentUser, fileNames, "SharedStructure", 0);
  SetNumber(Hive::CurrentUser, fileNames, "ReplaceSpaces", 0);
  SetText(Hive::CurrentUser, kModuleKey + "\\OptBom", "User_Fixed", "Fixed");
  SetText(Hive::CurrentUser, kModuleKey + "\\OptBom", "User_Size", "%BOM2%");
  StartSession(arguments);
}

void Calculation::Fill(Record& record, const char* typeOfPart) {
  record.SetKeyWord("Main", "DataFile", "KEELDATA|SHAFT")
      .SetKeyWord("Object", "CadDescription", Caption())
      .SetKeyWord("Cadx", "ReallySmartPart", "0")
      .SetGlobal("TypeOfPart", typeOfPart)
      .SetGlobal("Path", "C:\\Vantorel\\Models\\")
      // A template names the field in capitals, the field itself is named otherwise.
      .SetGlobal("Bom2", "20x30")
      .SetGlobal("BOM2", "20x30")
      .SetModelId("Shaft_1")
      .SetViewKey("ISO")
      .SetParameter("d", "20", "mm")
      .SetParameter("note", "a,b", "")
      .SetParameter("mass", "2.5", "kg")
      .SetParameter("VXP_PP_Volume", "9", "ND");
}

std::string Calculation::Calculated(const char* typeOfPart) {
  Record record;
  Fill(record, typeOfPart);
  return record.Id();
}

std::string Calculation::ParameterList(const Record& record) {
  std::string list = "*view*,ISO";
  for (const auto& [name, value] : record.Parameters()) {
    if (name.rfind("VXP_", 0) == 0) continue;
    list += "," + name + "," + (value == "a,b" ? "a<VXCOMMA>b" : value);
  }
  return list;
}

namespace {

bool StartsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

bool IsOfStore(const std::string& function) {
  return StartsWith(function, "Com_") || StartsWith(function, "Link_");
}

bool Changes(const std::string& function) {
  return !StartsWith(function, "Com_Get") && !StartsWith(function, "Com_Is") &&
         !StartsWith(function, "Link_Get");
}

bool IsOfWindows(const std::string& function) {
  return StartsWith(function, "GetMainHwnd") || function == "McSetForegroundWindow";
}

}  // namespace

// A new protocol is asked for by blanks; a link's text names a protocol in front of "@".
std::string Calculation::Named(const std::string& text) const {
  if (!text.empty() && text.find_first_not_of(' ') == std::string::npos) return "new";
  const auto end = std::min(text.find('@'), text.size());
  const auto found = names.find(text.substr(0, end));
  return found == names.end() ? text : found->second + text.substr(end);
}

std::vector<std::string> Calculation::Steps(const std::vector<JournalCall>& calls,
                                            bool withStore) const {
  std::vector<std::string> steps;
  for (const JournalCall& call : calls) {
    if (IsOfWindows(call.function)) continue;
    std::string step = call.function;
    if (IsOfStore(call.function)) {
      if (!withStore || !Changes(call.function)) continue;
      for (const std::string& argument : call.arguments) step += " " + Named(argument);
      if (call.function == "Com_PutBuffer") step.resize(step.rfind(' '));
    } else {
      for (const std::string& argument : call.arguments) {
        const auto marker = argument.find("<@PID>");
        if (marker != std::string::npos) {
          step += " @" + Named(argument.substr(0, marker));
        } else if (names.count(argument) != 0) {
          step += " " + Named(argument);
        }
      }
    }
    steps.push_back(std::move(step));
  }
  return steps;
}

std::vector<std::string> Calculation::HostSteps() const {
  std::vector<std::string> steps = host.Commands();
  for (std::string& step : steps) {
    for (const auto& [id, name] : names) {
      const auto at = step.find(id);
      if (at != std::string::npos) step.replace(at, id.size(), name);
    }
  }
  return steps;
}

std::vector<std::string> Calculation::OnlyCall(const std::string& function,
                                               std::size_t connection) {
  const std::vector<JournalCall> calls = Calls(function);
  EXPECT_THAT(calls, SizeIs(1)) << function;
  if (calls.size() != 1 || calls[0].arguments.size() <= connection) return {};
  std::vector<std::string> arguments = calls[0].arguments;
  std::string& reference = arguments[connection];
  {
    Record copy;
    copy.SetFromReference(reference);
    EXPECT_EQ(copy.KeyWord("Main", "DataFile"), "KEELDATA|SHAFT");
    EXPECT_EQ(copy.Parameter("d"), "20 mm");
  }
  reference.resize(std::min(reference.size(), reference.find("<@PID>")));
  return arguments;
}

}  // namespace quillmar::contract
