// Opening, closing, erasing and copying of protocols, versions and buffers.
#include <cstring>

#include "core/Entries.h"
#include "core/EntryCall.h"

using quillmar::strict::EntryCall;
using quillmar::strict::Protocol;
using quillmar::strict::Store;
using quillmar::strict::WriteIdentifier;

namespace {

constexpr const char* kNewPrefix = "STRICTPID";

// What a failed open answers when the protocol is held elsewhere: only 1 means opened.
constexpr short kHeldElsewhere = 2;

bool AsksForNewProtocol(const std::string& id) {
  return id == std::string(QM_NEW_PROTOCOL_BLANKS, ' ');
}

// Follows the caller's list as its framework would, and finds what is wrong with it. The texts are
// taken over, nothing of the list is kept.
std::vector<std::string> TakeList(EntryCall& call, const QmStringList* list) {
  std::vector<std::string> texts;
  if (list == nullptr) {
    call.Violate("null list");
    return texts;
  }
  if (list->virtualTable == nullptr) call.Violate("a list without virtual table");
  if (list->count < 0) call.Violate("a negative number of texts");
  if (list->blockSize <= 0) call.Violate("a block size that is not positive");

  const QmStringNode* previous = nullptr;
  for (const QmStringNode* node = list->head; node != nullptr; node = node->next) {
    if (static_cast<int32_t>(texts.size()) == list->count) {
      call.Violate("more nodes than the list counts");
      return texts;
    }
    if (node->previous != previous) call.Violate("a node that does not lead back");
    if (node->text == nullptr) {
      call.Violate("a node without text");
      return texts;
    }
    QmTextHeader header;
    std::memcpy(&header, node->text - sizeof header, sizeof header);
    if (header.references != -1 && header.references < 1) {
      call.Violate("a text with reference count " + std::to_string(header.references));
    }
    if (header.length < 0 || header.length != static_cast<int32_t>(std::strlen(node->text))) {
      call.Violate("a text whose length is not its own");
    }
    if (header.capacity < header.length) call.Violate("a text longer than its capacity");
    texts.emplace_back(node->text);
    previous = node;
  }
  if (list->tail != previous) call.Violate("a tail that is not the last node");
  if (static_cast<int32_t>(texts.size()) != list->count) call.Violate("fewer nodes than counted");
  return texts;
}

}  // namespace

// A second open of a protocol that is open here succeeds and does not nest: whoever makes a new
// protocol opens it twice and closes it once.
short Strict_Com_OpenProtocol(char* protocolId) {
  EntryCall call("Com_OpenProtocol");
  std::string id = call.IdentifierBuffer(protocolId);
  if (!call.Require(!id.empty())) return call.Refuse();
  if (AsksForNewProtocol(id)) {
    id = Store::Instance().NewIdentifier(kNewPrefix);
    WriteIdentifier(protocolId, id);
  }
  Protocol& protocol = Store::Instance().Make(id);
  if (protocol.state == Protocol::State::HeldByCalculation) return call.Refuse(kHeldElsewhere);
  protocol.state = Protocol::State::Open;
  return call.Accept();
}

short Strict_Com_CloseProtocol(const char* protocolId) {
  EntryCall call("Com_CloseProtocol");
  Protocol* protocol = call.Opened(protocolId);
  if (!call.Sound()) return call.Refuse();
  protocol->state = Protocol::State::Closed;
  return call.Accept();
}

short Strict_Com_EraseProtocol(const char* protocolId) {
  EntryCall call("Com_EraseProtocol");
  const Protocol* protocol = call.Named(protocolId);
  if (!call.Sound() || protocol->state == Protocol::State::HeldByCalculation) return call.Refuse();
  Store::Instance().Erase(protocolId);
  return call.Accept();
}

short Strict_Com_IsProtocolExists(const char* protocolId) {
  EntryCall call("Com_IsProtocolExists");
  const Protocol* protocol = call.Named(protocolId);
  if (!call.Sound()) return call.Refuse(QM_PROTOCOL_MISSING);
  switch (protocol->state) {
    case Protocol::State::Open:
      return call.Accept(QM_PROTOCOL_OPEN);
    case Protocol::State::Closed:
      return call.Accept(QM_PROTOCOL_CLOSED);
    case Protocol::State::HeldByCalculation:
      break;
  }
  return call.Accept(QM_PROTOCOL_HELD_BY_CALCULATION);
}

short Strict_Com_GetOwnerHWND(const char* protocolId, QmWindow* window) {
  EntryCall call("Com_GetOwnerHWND");
  const Protocol* protocol = call.Named(protocolId);
  call.Output(window);
  if (!call.Sound()) return call.Refuse();
  if (protocol->state != Protocol::State::HeldByCalculation) {
    call.Violate("asked of a protocol that no calculation holds");
    return call.Refuse();
  }
  *window = protocol->holder;
  return call.Accept();
}

short Strict_Com_CopyProtocol(const char* sourceId, char* newId) {
  EntryCall call("Com_CopyProtocol");
  const Protocol* source = call.Named(sourceId);
  const std::string blanks = call.IdentifierBuffer(newId);
  if (!AsksForNewProtocol(blanks)) call.Violate("the new identifier is not given as 25 blanks");
  if (!call.Sound() || source->state == Protocol::State::HeldByCalculation) return call.Refuse();
  const std::string id = Store::Instance().NewIdentifier(kNewPrefix);
  Protocol& copy = Store::Instance().Make(id);
  copy.Read(source->Write());
  copy.major = source->major;
  copy.minor = source->minor;
  copy.state = Protocol::State::Open;
  WriteIdentifier(newId, id);
  return call.Accept();
}

short Strict_Com_GetVersion(const char* protocolId, int* major, int* minor) {
  EntryCall call("Com_GetVersion");
  const Protocol* protocol = call.Opened(protocolId);
  call.Output(major);
  call.Output(minor);
  if (!call.Sound()) return call.Refuse();
  *major = protocol->major;
  *minor = protocol->minor;
  return call.Accept();
}

short Strict_Com_SetVersion(const char* protocolId, int major, int minor) {
  EntryCall call("Com_SetVersion");
  Protocol* protocol = call.Opened(protocolId);
  call.Number(major);
  call.Number(minor);
  if (!call.Sound()) return call.Refuse();
  protocol->major = major;
  protocol->minor = minor;
  return call.Accept();
}

short Strict_Com_GetBuffer(const char* protocolId, QmStringList** list) {
  EntryCall call("Com_GetBuffer");
  const Protocol* protocol = call.Opened(protocolId);
  call.Output(list);
  if (!call.Sound()) return call.Refuse();
  *list = Store::Instance().HandOut(protocolId, protocol->Write());
  return call.Accept();
}

short Strict_Com_PutBuffer(const char* protocolId, QmStringList* list) {
  EntryCall call("Com_PutBuffer");
  Protocol* protocol = call.Opened(protocolId);
  const std::vector<std::string> texts = TakeList(call, list);
  call.Note(std::to_string(texts.size()));
  if (!call.Sound()) return call.Refuse();
  protocol->Read(texts);
  return call.Accept();
}
