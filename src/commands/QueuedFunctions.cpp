#include "commands/QueuedFunctions.h"

#include <string>

namespace quillmar {
namespace {

int CommandZero(const PartServices& services) {
  return services.host.CallInt(QM_HOST_COMMAND, {0});
}

struct Row {
  int number;
  const char* name;
  int (*run)(const PartServices&);  // null: this build does not offer the function
};

constexpr Row kFunctions[] = {
    {0, "host command 0", &CommandZero},
    {1, "recalculate", nullptr},
    {2, "replace", nullptr},
    {3, "recalculate with new views", nullptr},
    {4, "update", nullptr},
    {5, "copy", nullptr},
    {6, "hand over bolted connection", nullptr},
    {7, "scan group", nullptr},
    {8, "scan group again", nullptr},
    {9, "connect assembly protocol", nullptr},
    {10, "scan bill of materials", nullptr},
    {103, "recalculate with flag", nullptr},
    {4001, "RefreshAllLinks", nullptr},
    {4002, "UpdateExtendedData", nullptr},
    {4003, "DataWizard", nullptr},
    {4004, "CreateUniqueCopy", nullptr},
};

}  // namespace

QueuedFunctions::QueuedFunctions(const PartServices& owner, std::function<void()> postMessage)
    : services(owner), post(std::move(postMessage)) {}

void QueuedFunctions::Queue(int number) {
  pending = number;
  post();
}

int QueuedFunctions::Run() {
  for (const Row& row : kFunctions) {
    if (row.number != pending) continue;
    if (row.run != nullptr) return row.run(services);
    services.errors.ReportError(std::string("Function not available: ") + row.name, QM_HERE);
    return 0;
  }
  return 0;
}

}  // namespace quillmar
