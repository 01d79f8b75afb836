// Everything that part objects work with: the real store behind a journal, a CAD of the test's own,
// a calculation host that cannot be reached but is noted when it is asked.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FakeCad.h"
#include "Journal.h"
#include "parts/PartServices.h"
#include "parts/VXPart.h"

namespace quillmar::test {

// A value of a protocol.
struct Entry {
  const char* section;  // "Globals" and "Data" go through their own operations
  const char* key;
  const char* value;
  const char* unit = "";
};

class PartsWorld : public testing::Test {
 protected:
  PartsWorld();
  ~PartsWorld() override;

  // Makes a protocol that is named so in the journal, and closes it; its identifier.
  std::string MakeProtocol(const std::string& name, const std::vector<Entry>& entries);
  void Put(const std::string& protocolId, const std::vector<Entry>& entries);
  std::string Get(const std::string& protocolId, const char* section, const char* key);
  // "value unit" of a data parameter.
  std::string GetParam(const std::string& protocolId, const char* name);
  std::string ReferenceOf(const std::string& protocolId);
  // The folder of the store, which the journal calls SUITE, and files in it.
  static const std::string& SuiteFolder();
  static std::string WriteSuiteFile(const std::string& name, const std::string& text);

  // Runs `use` on the part object of a protocol, opened through the journal.
  template <class Use>
  bool WithPart(const std::string& protocolId, Use use);
  bool Insert(const std::string& protocolId, InsertMode mode = InsertMode::Plain);
  bool Update(const std::string& protocolId);

  // Reports of the parts since the last call, as "File.cpp: message"; those of the protocol object
  // itself are left out.
  std::vector<std::string> TakeReports();
  void SetOption(const std::string& section, const std::string& name, const std::string& text);
  void SetOption(const std::string& section, const std::string& name, std::uint32_t number);
  void RereadOptions() { options.Replace("options", options.Key()); }

  // All calls since the part object was asked, and those of one partner.
  std::vector<std::string> Calls() const { return Journal::Get().Lines(); }
  std::vector<std::string> CadCalls() const { return Journal::Get().LinesOf("cad "); }

 private:
  class NotedHost : public CalcHost {
   public:
    using CalcHost::CalcHost;
    int StartHost() override {
      Journal::Get().Note("host");
      return 0;
    }
  };

  ErrorLog seedErrors;
  WindowActivator activator;
  ProtocolContext seeding;
  StorageTable storage;
  LinkTable links;

 protected:
  ErrorLog errors;
  ProtocolContext protocols;
  CadSession session;
  CadDriverTable driver;
  OptionsStore options;
  FileNameSettings fileNames;
  LanguageTable texts;
  BomTags tags;
  UniqueIds ids;

 private:
  InstallationPaths paths;
  IpcLibrary ipc;
  NotedHost host;
  BoltedConnectionLibrary bolted;
  std::unique_ptr<ProtocolConverter> converter;
  double axisOverlap = 0.0;

 protected:
  PartServices services;
};

}  // namespace quillmar::test

#include "parts/PartFactory.h"

template <class Use>
bool quillmar::test::PartsWorld::WithPart(const std::string& protocolId, Use use) {
  VXProtocol protocol(protocols, protocolId);
  Journal::Get().Reset();
  TakeReports();
  const auto part = CreatePartForProtocol(services, protocol);
  return part != nullptr && use(*part);
}
