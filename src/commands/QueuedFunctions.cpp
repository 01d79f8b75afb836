#include "commands/QueuedFunctions.h"

#include <string>

#include "commands/Commands.h"
#include "commands/ExtendedDataRefresh.h"
#include "commands/GroupScans.h"
#include "commands/LinkRefresh.h"
#include "commands/ProtocolCopies.h"
#include "commands/QueuedCommands.h"
#include "userparts/DesktopTemplate.h"

namespace quillmar {
namespace {

int CommandZero(const CommandContext& context) {
  return context.services.host.CallInt(QM_HOST_COMMAND, {0});
}

int ConnectAssembly(const CommandContext& context) {
  return ConnectNewAssemblyProtocol(context) ? 1 : 0;
}

int StartDataWizard(const CommandContext& context) { return DataWizard(context.services); }

int MakeUnique(const CommandContext& context) { return CreateUniqueCopy(context.services) ? 1 : 0; }

int UpdateAllExtendedData(const CommandContext& context) {
  return UpdateExtendedData(context.services);
}

struct Row {
  int number;
  const char* name;
  int (*run)(const CommandContext&);  // null: this build does not offer the function
};

constexpr Row kFunctions[] = {
    {0, "host command 0", &CommandZero},
    {1, "recalculate", &RecalculateSelected},
    {2, "replace", &ReplaceSelected},
    {3, "recalculate with all views", &RecalculateWithViews},
    {4, "update", &UpdateSelected},
    {5, "copy", &CopySelected},
    {6, "hand over bolted connection", &HandOverBoltedConnection},
    {7, "scan assembly", &ScanAssembly},
    {8, "scan selected", &ScanSelected},
    {9, "connect assembly protocol", &ConnectAssembly},
    {10, "scan bill of materials", &ScanBillOfMaterials},
    {103, "recalculate as independent part", &RecalculateAsIndependentPart},
    {kRefreshAllLinks, "RefreshAllLinks", &RefreshAllLinks},
    {kUpdateExtendedData, "UpdateExtendedData", &UpdateAllExtendedData},
    {4003, "DataWizard", &StartDataWizard},
    {4004, "CreateUniqueCopy", &MakeUnique},
};

}  // namespace

QueuedFunctions::QueuedFunctions(const CommandContext& owner, std::function<void()> postMessage)
    : context(owner), post(std::move(postMessage)) {}

void QueuedFunctions::Queue(int number) {
  pending = number;
  post();
}

int QueuedFunctions::Run() {
  for (const Row& row : kFunctions) {
    if (row.number != pending) continue;
    if (row.run != nullptr) return row.run(context);
    context.services.errors.ReportError(std::string("Function not available: ") + row.name,
                                        QM_HERE);
    return 0;
  }
  return 0;
}

}  // namespace quillmar
