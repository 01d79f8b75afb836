// Opening, closing, copying and erasing protocols, their version and their owner.
#include <cstring>
#include <string>

#include "keelcomm/Failures.h"
#include "keelcomm/StorageFunctions.h"

namespace quillmar::keelcomm::functions {
namespace {

bool IsProtocolId(std::string_view id) {
  return !id.empty() && id.size() <= kLongestProtocolId &&
         id.find_first_not_of(' ') != std::string_view::npos;
}

bool AsksForNewProtocol(std::string_view id) {
  return id.size() == QM_NEW_PROTOCOL_BLANKS && id.find_first_not_of(' ') == std::string_view::npos;
}

// `buffer` holds QM_PROTOCOL_ID_BUFFER bytes, far more than an identifier takes.
void WriteId(char* buffer, const std::string& id) {
  std::memcpy(buffer, id.c_str(), id.size() + 1);
}

}  // namespace

short Com_OpenProtocol(char* protocolId) {
  if (protocolId == nullptr) return 0;
  if (AsksForNewProtocol(protocolId)) {
    WriteId(protocolId, Store::Instance().OpenNew().id);
    return 1;
  }
  if (!IsProtocolId(protocolId)) return 0;
  Store::Instance().Open(protocolId);
  return 1;
}

short Com_CloseProtocol(const char* protocolId) {
  OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr) return 0;
  Store::Instance().Close(*protocol);
  return 1;
}

short Com_EraseProtocol(const char* protocolId) {
  return protocolId != nullptr && IsProtocolId(protocolId) && Store::Instance().Erase(protocolId);
}

short Com_CopyProtocol(const char* sourceId, char* newId) {
  if (sourceId == nullptr || newId == nullptr || !AsksForNewProtocol(newId)) return 0;
  const OpenProtocol* copy = Store::Instance().OpenCopy(sourceId);
  if (copy == nullptr) return 0;
  WriteId(newId, copy->id);
  return 1;
}

short Com_IsProtocolExists(const char* protocolId) {
  if (protocolId == nullptr) return QM_PROTOCOL_MISSING;
  Store& store = Store::Instance();
  // A protocol that is open here is so whatever happens to the database.
  const short otherwise =
      store.Find(protocolId) != nullptr ? QM_PROTOCOL_OPEN : QM_PROTOCOL_MISSING;
  const short stored = Guarded([&]() -> short {
    if (store.FindOwner(protocolId)) return QM_PROTOCOL_HELD_BY_CALCULATION;
    if (otherwise == QM_PROTOCOL_OPEN) return QM_PROTOCOL_OPEN;
    return store.IsStored(protocolId) ? QM_PROTOCOL_CLOSED : QM_PROTOCOL_MISSING;
  });
  return stored == 0 ? otherwise : stored;
}

short Com_GetOwnerHWND(const char* protocolId, QmWindow* window) {
  if (protocolId == nullptr || window == nullptr) return 0;
  const auto owner = Store::Instance().FindOwner(protocolId);
  if (!owner) return 0;
  *window = owner->window;
  return 1;
}

short Com_GetVersion(const char* protocolId, int* major, int* minor) {
  const OpenProtocol* protocol = Opened(protocolId);
  if (protocol == nullptr || major == nullptr || minor == nullptr) return 0;
  const Version version = protocol->record.CurrentVersion();
  *major = version.major;
  *minor = version.minor;
  return 1;
}

short Com_SetVersion(const char* protocolId, int major, int minor) {
  OpenProtocol* protocol = OpenedToWrite(protocolId);
  if (protocol == nullptr) return 0;
  protocol->record.SetVersion({major, minor});
  return 1;
}

}  // namespace quillmar::keelcomm::functions
