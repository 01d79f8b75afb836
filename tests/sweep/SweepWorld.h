// The module up to its commands, on the real store, a host and a CAD that fail where they are told.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "FaultyCompanions.h"
#include "commands/CallbackDispatcher.h"
#include "support/DebuggerOutput.h"
#include "support/TestMachine.h"

namespace quillmar::test {

class SweepWorld {
 public:
  SweepWorld();
  ~SweepWorld();

  // A protocol of a calculated shaft in which every keyword that the roads read is there, but for
  // those that the roads take as missing.
  std::string MakeShaft();
  // Lets the host call back for one protocol, and gives the messages reported meanwhile.
  std::vector<std::string> Callback(int code, const std::string& protocolId);
  // Removes the protocol; false when it was still open.
  bool Erase(const std::string& protocolId);

 private:
  TestMachine machine;
  DebuggerOutput debugger;
  ErrorLog quiet;  // of the test's own work on protocols
  ErrorLog errors;
  WindowActivator activator;
  ProtocolLibraries libraries;
  StorageTable storage;
  LinkTable links;
  ProtocolContext own;
  ProtocolContext protocols;
  CadSession session;
  CadDriverTable driver;
  InstallationPaths paths{nullptr};
  LanguageTable texts;
  BoltedConnectionLibrary bolted;
  IpcLibrary ipc;
  CalcHost host;
  OptionsStore options;
  FileNameSettings fileNames;
  BomTags tags;
  UniqueIds ids;
  ViewKeyMapping viewKeys;
  std::unique_ptr<ProtocolConverter> converter;
  double axisOverlap = 0.0;
  PartServices services;
  CallbackDispatcher dispatcher;
  std::shared_ptr<FaultyHost> server;
};

}  // namespace quillmar::test
