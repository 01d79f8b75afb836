#include "SweepWorld.h"

#include <filesystem>

#include "base/RegistryKey.h"
#include "platform/Profile.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::test {
namespace {

struct Keyword {
  const char* section;
  const char* keyword;
  const char* value;
};

constexpr Keyword kKeywords[] = {
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

void CopyBeside(const TestMachine& machine, const char* library) {
  std::filesystem::copy_file(
      library, machine.HostPath(machine.InFolder(std::filesystem::path(library).filename())));
}

}  // namespace

SweepWorld::SweepWorld()
    : own{libraries.Storage(), libraries.Links(), quiet, activator},
      protocols{storage, links, errors, activator},
      host({.paths = paths,
            .protocols = protocols,
            .ipc = ipc,
            .session = [] { return std::nullopt; },
            .showError = [](const std::string&) {}}),
      options({}, GetModuleRegistryKey(false)),
      services{session, driver, bolted,    host, options,   fileNames, texts,
               paths,   tags,   converter, ids,  protocols, errors,    axisOverlap},
      dispatcher(services),
      server(std::make_shared<FaultyHost>()) {
  CopyBeside(machine, STORAGE_FILE);
  CopyBeside(machine, LINK_FILE);
  libraries.Load(machine.Folder(), "Sweep");
  storage = FaultyStorage(libraries.Storage());
  links = FaultyLinks(libraries.Links());
  driver = FaultyDriver();
  session.modelExt = "dbp";
  session.modelDirName = "Bench";

  RegistryKey key;
  key.Create(platform::Hive::LocalMachine, "Software\\Classes\\" QM_HOST_PROGID "\\CLSID");
  key.WriteString("", QM_HOST_CLASS_ID);
  auto& current = platform::Machine::Current();
  current.SetClock(1000);
  current.RegisterActiveObject(QM_HOST_CLASS_ID, server);
  host.SetProgId(QM_HOST_PROGID);
  fileNames.Load(GetModuleRegistryKey(true) + "Sweep\\", machine.InFolder("Hexaplan.ini"));
  converter =
      std::make_unique<ProtocolConverter>("Sweep", machine.InFolder("ProtConv.ini"), viewKeys);
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
}

SweepWorld::~SweepWorld() {
  host.Detach();
  libraries.Free();
}

std::string SweepWorld::MakeShaft() {
  VXProtocol protocol(own);
  protocol.CreateNew();
  for (const Keyword& row : kKeywords) protocol.PutKeyWord(row.section, row.keyword, row.value);
  for (const auto& [item, value] : kGlobals) protocol.PutGlobalData(item, value);
  protocol.PutDataParam("mass", "2.5", "kg");
  protocol.PutModelID("Shaft");
  protocol.PutViewKey("MODEL");
  return protocol.GetProtocolID();
}

std::vector<std::string> SweepWorld::Callback(int code, const std::string& protocolId) {
  server->callbackCode = code;
  server->callbackList = protocolId;
  debugger.Take();
  dispatcher.OnCallback();
  std::vector<std::string> messages;
  for (const std::string& text : debugger.Take()) {
    // The summary of a failed step ends with a line end, a report does not.
    if (!text.ends_with('\n')) messages.push_back(text.substr(0, text.find('\n')));
  }
  return messages;
}

bool SweepWorld::Erase(const std::string& protocolId) {
  const bool closed = VXProtocol::ProtocolExists(own, protocolId) == QM_PROTOCOL_CLOSED;
  VXProtocol(own, protocolId).Erase();
  return closed;
}

}  // namespace quillmar::test
