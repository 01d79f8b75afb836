// The protocol store of a machine, through the storage and link libraries that are installed there.
#pragma once

#include <string>
#include <vector>

#include "base/ErrorLog.h"
#include "base/WindowActivator.h"
#include "keelcomm/SharedRecords.h"
#include "protocol/VXProtocol.h"

namespace CLI {
class App;
}

namespace tools {

// Where a store lies, from the command line.
struct StorePlace {
  std::string image = ".";  // folder of the system that holds drive_c
  std::string suite = "C:\\Vantorel\\Fendrake";

  void AddOptions(CLI::App& app);
};

struct ProtocolSummary {
  std::string id;
  int major = 0;
  int minor = 0;
  std::string dataFile;  // kind of the calculation; empty when the protocol does not say
  std::string viewKey;
  std::string type;  // "TypeOfPart"
  short values = 0;  // data parameters
  int state = 0;     // QM_PROTOCOL_CLOSED, QM_PROTOCOL_HELD_BY_CALCULATION
};

class StoreAccess {
 public:
  // Throws a ToolError that says what is missing.
  explicit StoreAccess(const StorePlace& place);

  const quillmar::ProtocolContext& Context() const { return context; }
  // Folder of the store's library on the machine, without trailing backslash.
  const std::string& SuiteFolder() const { return suite; }

  // Identifiers of all stored protocols, in the order of their making.
  std::vector<std::string> Ids() const;
  // What is wrong with the database, a line each.
  std::vector<std::string> DatabaseFindings() const;

  bool Exists(const std::string& id) const;
  // Throws a ToolError when the protocol does not exist: opening it would make it.
  void RequireProtocol(const std::string& id) const;
  // Leaves the protocol as it is; a ToolError when there is none.
  ProtocolSummary Summary(const std::string& id) const;

 private:
  std::string suite;
  quillmar::ErrorLog errors;
  quillmar::WindowActivator activator;
  quillmar::ProtocolLibraries libraries;
  quillmar::ProtocolContext context{libraries.Storage(), libraries.Links(), errors, activator};
  int(QM_CDECL* listProtocols)(const char* const**, int*) = nullptr;
  int(QM_CDECL* checkDatabase)(const char**) = nullptr;
};

}  // namespace tools
