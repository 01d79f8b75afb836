#include "convert/Conversion.h"

#include <fmt/format.h>

#include <algorithm>

#include "common/Place.h"
#include "common/Program.h"
#include "common/ReferenceFiles.h"
#include "common/StoredRecord.h"
#include "convert/Journal.h"

namespace tools {
namespace {

using quillmar::VXProtocol;

std::string VersionOf(const ProtocolSummary& summary) {
  return fmt::format("{}.{}", summary.major, summary.minor);
}

// Fields in an order of their own: copies were written in another one.
bool HoldTheSame(const StoredRecord& left, const StoredRecord& right) {
  return DifferencesOf(left, right).empty();
}

}  // namespace

Outcome Before(const StoreAccess& store, const std::string& id) {
  Outcome outcome;
  outcome.id = id;
  const ProtocolSummary summary = store.Summary(id);
  outcome.kind = summary.dataFile;
  outcome.before = VersionOf(summary);
  if (summary.state == QM_PROTOCOL_HELD_BY_CALCULATION) {
    outcome.obstacle = "a calculation holds it open";
  } else if (summary.dataFile.empty()) {
    outcome.obstacle = "it does not say what calculation it is of";
  } else if (summary.major != quillmar::kOldMajor && summary.major != quillmar::kCurrentMajor) {
    outcome.obstacle = fmt::format("its layout {} is unknown", outcome.before);
  }
  return outcome;
}

std::string Refusal(const Direction& direction, const std::string& after) {
  if (after.starts_with(fmt::format("{}.", direction.TargetMajor()))) return {};
  return fmt::format("the conversion leaves it in the layout {}", after);
}

Conversion::Conversion(const StoreAccess& store, const Direction& direction, Journal& journal)
    : store(store),
      direction(direction),
      journal(journal),
      converter(direction.settings, direction.mappingFile, mapping) {}

Outcome Conversion::Convert(const std::string& id) {
  const bool resumed = journal.IsBegun(id);
  if (resumed && store.Summary(id).state != QM_PROTOCOL_HELD_BY_CALCULATION) {
    StoreReference(store, id,
                   ReadReferenceFile(JoinSystemPath(journal.Folder(), ReferenceFileName(id))));
  }
  Outcome outcome = Before(store, id);
  if (!outcome.obstacle.empty()) return outcome;
  const StoredRecord before = ReadRecord(store, id);
  if (!resumed) {
    WriteReferenceFile(journal.Folder(), id, ReferenceOf(store, id));
    journal.Begin(id);
  }
  const auto copies = ConvertStored(id);
  if (resumed) EraseLeftovers(copies);
  journal.Done(id, copies);

  const StoredRecord after = ReadRecord(store, id);
  outcome.after = after.version;
  outcome.differences = DifferencesOf(before, after);
  outcome.newProtocols = copies.size();
  outcome.obstacle = Refusal(direction, outcome.after);
  return outcome;
}

std::vector<std::string> Conversion::ConvertStored(const std::string& id) {
  std::vector<std::unique_ptr<VXProtocol>> views;
  mapping = {};
  VXProtocol protocol(store.Context(), id);
  converter.Convert(protocol, direction.TargetMajor(), views, 0);
  std::vector<std::string> copies;
  bool stored = protocol.Close();
  for (const auto& view : views) {
    if (!view->IsReady()) throw ToolError("A view of " + ForUser(id) + " cannot be copied");
    copies.push_back(view->GetProtocolID());
    stored = view->Close() && stored;
  }
  if (!stored) throw ToolError(fmt::format("{} cannot be stored", ForUser(id)));
  return copies;
}

void Conversion::EraseLeftovers(const std::vector<std::string>& copies) {
  if (copies.empty()) return;
  for (const std::string& id : store.Ids()) {
    if (!journal.IsUnknown(id) || std::find(copies.begin(), copies.end(), id) != copies.end()) {
      continue;
    }
    const StoredRecord leftover = ReadRecord(store, id);
    const bool isCopy = std::any_of(copies.begin(), copies.end(), [&](const std::string& copy) {
      return HoldTheSame(leftover, ReadRecord(store, copy));
    });
    if (isCopy) VXProtocol(store.Context(), id).Erase();
  }
}

}  // namespace tools
