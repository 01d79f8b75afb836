// The module's collaborators around given companion tables: everything a part object works with,
// without the library around it.
#pragma once

#include <memory>

#include "parts/PartServices.h"
#include "platform/native/Machine.h"

namespace quillmar::bench {

class ModuleWorld {
 public:
  ModuleWorld(const StorageTable& storageTable, const LinkTable& linkTable,
              const CadDriverTable& driverTable);

  const PartServices& Services() const { return services; }
  const ProtocolContext& Protocols() const { return protocols; }

 private:
  StorageTable storage;
  LinkTable links;
  CadDriverTable driver;
  InstallationPaths paths{nullptr};
  LanguageTable texts;
  ErrorLog errors;
  WindowActivator activator;
  ProtocolContext protocols;
  CadSession session;
  BoltedConnectionLibrary bolted;
  IpcLibrary ipc;
  CalcHost host;
  OptionsStore options;
  FileNameSettings fileNames;
  BomTags tags;
  UniqueIds ids;
  std::unique_ptr<ProtocolConverter> converter;
  double axisOverlap = 0.0;
  PartServices services;
};

// A machine on an empty temporary folder, current for as long as it lives.
class TemporaryMachine {
 public:
  TemporaryMachine();
  ~TemporaryMachine();
  const std::filesystem::path& Root() const { return root; }

 private:
  std::filesystem::path root;
  platform::Machine machine;
  platform::MachineScope scope;
};

}  // namespace quillmar::bench
