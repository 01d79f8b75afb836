// export and import.
#include <fmt/format.h>

#include <cstdio>

#include "common/Program.h"
#include "common/ReferenceFiles.h"
#include "common/StoredRecord.h"
#include "common/Terminal.h"
#include "store/Commands.h"

namespace tools {
namespace {

std::vector<std::string> WantedIds(const StoreAccess& store, const Export& what) {
  if (what.all) return store.Ids();
  std::vector<std::string> ids;
  for (const std::string& id : what.ids) ids.push_back(FromUser(id));
  for (const std::string& id : ids) store.RequireProtocol(id);
  return ids;
}

// What importing one file comes to, for the user; throws what stands against it.
std::string ImportOne(const StoreAccess& store, const Import& what, const std::string& file) {
  const std::string reference = ReadReferenceFile(file);
  const std::string id = what.asId.empty() ? HeadOf(reference).id : FromUser(what.asId);
  const bool exists = store.Exists(id);
  if (exists && !what.replace) {
    throw ToolError(
        fmt::format("the store has {} already (--replace writes over it)", ForUser(id)));
  }
  if (store.Exists(id) && store.Summary(id).state == QM_PROTOCOL_HELD_BY_CALCULATION) {
    throw ToolError(fmt::format("{} is held open by a calculation", ForUser(id)));
  }
  if (what.dryRun) {
    ReadRecordOfReference(store, reference);
    return fmt::format("{} would be {}", ForUser(id), exists ? "replaced" : "made");
  }
  StoreReference(store, id, reference);
  return fmt::format("{} {}", ForUser(id), exists ? "replaced" : "made");
}

}  // namespace

int ExportProtocols(const StoreAccess& store, const Export& what) {
  const auto ids = WantedIds(store, what);
  if (what.folder.empty()) {
    if (ids.size() != 1) throw ToolError("Name one protocol, or a folder with --out");
    // The text alone, bytes as they are: it may go into another program.
    const std::string reference = ReferenceOf(store, ids.front());
    std::fwrite(reference.data(), 1, reference.size(), stdout);
    return kDone;
  }
  ProgressBar progress("Exporting", ids.size());
  for (const std::string& id : ids) {
    WriteReferenceFile(what.folder, id, ReferenceOf(store, id));
    progress.Step();
  }
  Tell(Counted(ids.size(), "protocol") + " written to " + what.folder);
  return kDone;
}

int ImportProtocols(const StoreAccess& store, const Import& what) {
  if (!what.asId.empty() && what.files.size() != 1) {
    throw ToolError("--as names the identifier of one file");
  }
  int refused = 0;
  std::string told;
  {
    ProgressBar progress("Importing", what.files.size());
    for (const std::string& file : what.files) {
      try {
        told += ImportOne(store, what, file) + "\n";
      } catch (const ToolError& error) {
        told += fmt::format("{}: {}\n", file, error.what());
        ++refused;
      }
      progress.Step();
    }
  }
  Tell(fmt::format("{}{} done, {} refused", told, what.files.size() - refused, refused));
  return refused == 0 ? kDone : kFound;
}

}  // namespace tools
