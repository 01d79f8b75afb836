#include "PartsWorld.h"

#include <filesystem>

#include "base/RegistryKey.h"
#include "platform/Profile.h"
#include "support/DebuggerOutput.h"
#include "support/TestMachine.h"

namespace quillmar::test {
namespace {

// One machine for all tests, with the store in its folder: libraries stay loaded
// as long as the process lives.
struct SharedMachine {
  SharedMachine() {
    for (const std::filesystem::path file : {STORAGE_FILE, LINK_FILE}) {
      std::filesystem::copy_file(file,
                                 machine.HostPath(machine.InFolder(file.filename().string())));
    }
    if (!libraries.Load(machine.Folder(), "parts test")) ADD_FAILURE() << "the store does not load";
  }

  TestMachine machine;
  DebuggerOutput output;
  ProtocolLibraries libraries;
};

SharedMachine& Shared() {
  static SharedMachine shared;
  return shared;
}

const ProtocolLibraries& TheLibraries() { return Shared().libraries; }

std::string OptionsKey() { return Shared().machine.RegistryPath() + "\\Options"; }

void ForgetOptions() {
  RegistryKey key;
  if (key.Open(platform::Hive::CurrentUser, OptionsKey())) key.DeleteKey();
}

}  // namespace

PartsWorld::PartsWorld()
    : seeding{TheLibraries().Storage(), TheLibraries().Links(), seedErrors, activator},
      storage(RecordedStorage(TheLibraries().Storage())),
      links(RecordedLinks(TheLibraries().Links())),
      protocols{storage, links, errors, activator},
      options("options", OptionsKey()),
      paths(nullptr),
      host({paths, seeding, ipc, [] { return std::nullopt; }, [](const std::string&) {}}),
      services{session, driver, bolted,    host, options,   fileNames, texts,
               paths,   tags,   converter, ids,  protocols, errors,    axisOverlap} {
  ForgetOptions();
  RereadOptions();
  Journal::Get() = {};
  Journal::Get().Name(SuiteFolder(), "SUITE");
  FakeCad::Get() = {};
  BindRequired(driver);
  session.modelExt = "prt";
  session.featureExt = "ftr";
  session.modelDirName = "models";
  host.SetProgId("Quillmar.NoSuchHost");
  fileNames.Load(OptionsKey() + "\\", SuiteFolder() + "\\NoHost.ini");
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
}

PartsWorld::~PartsWorld() {
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", nullptr);
  ForgetOptions();
}

const std::string& PartsWorld::SuiteFolder() { return Shared().machine.Folder(); }

std::string PartsWorld::WriteSuiteFile(const std::string& name, const std::string& text) {
  const std::string path = Shared().machine.InFolder(name);
  Shared().machine.WriteFile(path, text);
  return path;
}

std::string PartsWorld::MakeProtocol(const std::string& name, const std::vector<Entry>& entries) {
  VXProtocol protocol(seeding);
  protocol.CreateNew();
  const std::string protocolId = protocol.GetProtocolID();
  Journal::Get().Name(protocolId, name);
  protocol.SetVersion(kCurrentMajor, 0);
  protocol.Close();
  protocol.Open(protocolId);
  Put(protocolId, entries);
  return protocolId;
}

void PartsWorld::Put(const std::string& protocolId, const std::vector<Entry>& entries) {
  VXProtocol protocol(seeding);
  protocol.Attach(protocolId);
  for (const Entry& entry : entries) {
    const std::string section = entry.section;
    if (section == "Globals") {
      protocol.PutGlobalData(entry.key, entry.value);
    } else if (section == "Data") {
      protocol.PutDataParam(entry.key, entry.value, entry.unit);
    } else if (section == "Model") {
      protocol.PutModelID(entry.value);
    } else {
      protocol.PutKeyWord(entry.section, entry.key, entry.value);
    }
  }
}

std::string PartsWorld::Get(const std::string& protocolId, const char* section, const char* key) {
  VXProtocol protocol(seeding);
  protocol.Attach(protocolId);
  std::string value;
  if (std::string(section) == "Globals") {
    protocol.GetGlobalData(key, value);
  } else {
    protocol.GetKeyWord(section, key, value);
  }
  return Journal::Get().WithNames(value);
}

std::string PartsWorld::GetParam(const std::string& protocolId, const char* name) {
  VXProtocol protocol(seeding);
  protocol.Attach(protocolId);
  std::string value;
  std::string unit;
  return protocol.GetDataParam(name, value, unit) ? value + " " + unit : "(none)";
}

std::string PartsWorld::ReferenceOf(const std::string& protocolId) {
  VXProtocol protocol(seeding);
  protocol.Attach(protocolId);
  std::string reference;
  protocol.MakeReference(reference, Markers::Standard);
  return reference;
}

bool PartsWorld::Insert(const std::string& protocolId, InsertMode mode) {
  return WithPart(protocolId, [&](VXPart& part) { return part.Insert(mode); });
}

bool PartsWorld::Update(const std::string& protocolId) {
  return WithPart(protocolId, [](VXPart& part) { return part.Update(); });
}

std::vector<std::string> PartsWorld::TakeReports() {
  std::vector<std::string> reports;
  for (const std::string& line : Shared().output.Take()) {
    const auto message = line.substr(0, line.find('\n'));
    const auto comma = line.find(", Line: ");
    if (comma == std::string::npos) continue;
    const auto slash = line.find_last_of("/\\", comma);
    const std::string file = line.substr(slash + 1, comma - slash - 1);
    if (!file.starts_with("VXProtocol")) reports.push_back(file + ": " + message);
  }
  return reports;
}

void PartsWorld::SetOption(const std::string& section, const std::string& name,
                           const std::string& text) {
  RegistryKey key;
  key.Create(platform::Hive::CurrentUser, OptionsKey() + "\\" + section);
  key.WriteString(name, text);
}

void PartsWorld::SetOption(const std::string& section, const std::string& name,
                           std::uint32_t number) {
  RegistryKey key;
  key.Create(platform::Hive::CurrentUser, OptionsKey() + "\\" + section);
  key.WriteDword(name, number);
}

}  // namespace quillmar::test
