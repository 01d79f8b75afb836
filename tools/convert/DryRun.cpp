#include "common/Program.h"
#include "common/StoredRecord.h"
#include "convert/Conversion.h"

namespace tools {
namespace {

using quillmar::VXProtocol;

// In a dry run protocols are made, changed and erased while they are open; opening finds them open,
// and what is never closed is never stored.
short QM_STDCALL FindOpen(char*) { return 1; }
short QM_STDCALL StayOpen(const char*) { return 1; }

quillmar::StorageTable ThatStoresNothing(const StoreAccess& store) {
  quillmar::StorageTable table = store.Context().storage;
  table.Com_OpenProtocol.pointer = &FindOpen;
  table.Com_CloseProtocol.pointer = &StayOpen;
  return table;
}

}  // namespace

DryRun::DryRun(const StoreAccess& store, const Direction& direction)
    : storage(ThatStoresNothing(store)),
      store(store),
      context{storage, store.Context().links, store.Context().errors, store.Context().activator},
      direction(direction),
      converter(direction.settings, direction.mappingFile, mapping) {}

Outcome DryRun::Try(const std::string& id) {
  Outcome outcome = Before(store, id);
  if (!outcome.obstacle.empty()) return outcome;
  VXProtocol copy(context);
  if (!copy.Copy(id)) throw ToolError("The storage library makes no copy of " + ForUser(id));
  const StoredRecord before = ReadRecord(copy);
  std::vector<std::unique_ptr<VXProtocol>> views;
  mapping = {};
  converter.Convert(copy, direction.TargetMajor(), views, 0);
  const StoredRecord after = ReadRecord(copy);
  outcome.after = after.version;
  outcome.differences = DifferencesOf(before, after);
  outcome.newProtocols = views.size();
  outcome.obstacle = Refusal(direction, outcome.after);
  for (const auto& view : views) view->Erase();
  copy.Erase();
  return outcome;
}

}  // namespace tools
