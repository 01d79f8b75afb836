// Conversion of all protocols of a store to the current layout or back to the older one.
//
// Nothing is lost when it is interrupted, at whatever point:
//  1. The reference text of a protocol is on the disk, in the folder of the run, before the
//  protocol
//     is touched; then the journal says that its conversion begins.
//  2. The converted protocol is stored by the one call that closes it, then the journal says that
//  it
//     is done, with the identifiers of the protocols that it was split into.
//  3. A run that finds an unfinished journal goes on with it: a protocol whose conversion began and
//     is not done gets its old contents back from the file and is converted anew; the copies that
//     the interrupted conversion had made already are erased, which are those protocols that nobody
//     knows of and that hold exactly what the copies of the new conversion hold.
// The files stay: "quillmar-store import --replace" takes any protocol back to what it was.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/StoreAccess.h"
#include "conversion/ProtocolConverter.h"

namespace tools {

struct Direction {
  bool up = true;
  // Key of the settings that the mapping file's sections begin with: what the add-in logs in with.
  std::string settings;
  std::string mappingFile;  // on the machine

  int TargetMajor() const { return up ? quillmar::kCurrentMajor : quillmar::kOldMajor; }
};

// What converting one protocol does, or has done.
struct Outcome {
  std::string id;
  std::string kind;  // of the calculation
  std::string before;
  std::string after;  // layout versions
  std::vector<std::string> differences;
  std::size_t newProtocols = 0;
  // Why it is left alone or was not converted; empty otherwise.
  std::string obstacle;

  bool IsChange() const { return obstacle.empty() && (!differences.empty() || newProtocols > 0); }
};

// Converts copies that never reach the disk.
class DryRun {
 public:
  DryRun(const StoreAccess& store, const Direction& direction);
  Outcome Try(const std::string& id);

 private:
  quillmar::StorageTable storage;
  const StoreAccess& store;
  quillmar::ProtocolContext context;
  const Direction& direction;
  // Emptied before each protocol: the table is made for sessions that meet few kinds of
  // calculations, and a kind goes on with what another one has loaded.
  quillmar::ViewKeyMapping mapping;
  quillmar::ProtocolConverter converter;
};

class Journal;

class Conversion {
 public:
  Conversion(const StoreAccess& store, const Direction& direction, Journal& journal);

  // Converts one protocol, or takes up its interrupted conversion.
  Outcome Convert(const std::string& id);

 private:
  std::vector<std::string> ConvertStored(const std::string& id);
  void EraseLeftovers(const std::vector<std::string>& copies);

  const StoreAccess& store;
  const Direction& direction;
  Journal& journal;
  quillmar::ViewKeyMapping mapping;  // as in a dry run
  quillmar::ProtocolConverter converter;
};

// What the protocol is before a conversion; `obstacle` is set when it must be left alone.
Outcome Before(const StoreAccess& store, const std::string& id);

// Why a conversion that ran has left the layout as it was; empty when it has not.
std::string Refusal(const Direction& direction, const std::string& after);

}  // namespace tools
