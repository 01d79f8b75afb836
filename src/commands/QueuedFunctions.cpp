#include "commands/QueuedFunctions.h"

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
  int (*run)(const CommandContext&);
};

constexpr Row kFunctions[] = {
    {0, &CommandZero},
    {1, &RecalculateSelected},
    {2, &ReplaceSelected},
    {3, &RecalculateWithViews},
    {4, &UpdateSelected},
    {5, &CopySelected},
    {6, &HandOverBoltedConnection},
    {7, &ScanAssembly},
    {8, &ScanSelected},
    {9, &ConnectAssembly},
    {10, &ScanBillOfMaterials},
    {103, &RecalculateAsIndependentPart},
    {kRefreshAllLinks, &RefreshAllLinks},
    {kUpdateExtendedData, &UpdateAllExtendedData},
    {4003, &StartDataWizard},
    {4004, &MakeUnique},
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
    if (row.number == pending) return row.run(context);
  }
  return 0;
}

}  // namespace quillmar
