#include "tessio/Parameters.h"

#include "keelcomm/SharedRecords.h"
#include "platform/Modules.h"
#include "quillmar/Storage.h"

namespace quillmar::tessio {
namespace {

// Nothing to do without a storage library in the process, for a protocol that is not open in it,
// and for a text that is no identifier.
void CallStorage(const char* function, const Notification& notification) {
  if (notification.text.empty()) return;
  const QmModule storage = platform::FindLoadedModule(QM_STORAGE_LIBRARY);
  void* found = storage == nullptr ? nullptr : platform::FindFunction(storage, function);
  if (found == nullptr) return;
  reinterpret_cast<int(QM_CDECL*)(const char*)>(found)(notification.text.c_str());
}

}  // namespace

void StoreParameters(const Notification& notification) {
  CallStorage("Keelcomm_Save", notification);
}

void RefreshParameters(const Notification& notification) {
  CallStorage("Keelcomm_Refresh", notification);
}

}  // namespace quillmar::tessio
