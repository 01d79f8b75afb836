#include "protocol/VXProtocol.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <tuple>

#include "platform/ForeignCall.h"
#include "platform/Messages.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr std::size_t kGrowStep = 1024;
// A library that keeps saying "more" is believed up to here. Nothing that belongs into a keyword
// comes near, and since every step fills its buffer anew, a larger bound would let a faulty library
// keep the CAD waiting for minutes.
constexpr std::size_t kLargestRead = 2 * 1024 * 1024;
// A buffer of blanks only is either a text of blanks or one that the library did not touch. So
// many tries settle the question.
constexpr std::size_t kLargestBlankText = 64 * kGrowStep;

constexpr const char* kClipboardProtocol = "KEELCLIP";
constexpr const char* kNotReady = "Protocol is not ready";

struct MarkerPair {
  std::string_view identifier;
  std::string_view element;
};

const MarkerPair& MarkersOf(Markers markers) {
  static constexpr MarkerPair kStandard{"<@PID>", "<@EL>"};
  static constexpr MarkerPair kAlternate{"<@GMHPID>", "<@GMHEL>"};
  return markers == Markers::Standard ? kStandard : kAlternate;
}

bool IsUntouched(const char* buffer, std::size_t length, std::size_t capacity) {
  return length == capacity && std::strspn(buffer, " ") >= capacity;
}

// Reads texts into buffers that grow until nothing was cut: `call` gets one buffer for each
// output, all equally long and filled with blanks, and returns nonzero for success.
template <class Call, class... Out>
bool ReadGrowing(Call call, Out&... outputs) {
  constexpr std::size_t kCount = sizeof...(Out);
  const std::array<std::string*, kCount> targets{&outputs...};
  char small[kCount][kGrowStep + 1];
  std::unique_ptr<char[]> large;
  for (std::size_t capacity = kGrowStep;; capacity += kGrowStep) {
    std::array<char*, kCount> buffers;
    if (capacity > kGrowStep) {
      large = std::make_unique_for_overwrite<char[]>(kCount * (capacity + 1));
    }
    for (std::size_t i = 0; i < kCount; ++i) {
      buffers[i] = large ? large.get() + i * (capacity + 1) : small[i];
      std::memset(buffers[i], ' ', capacity);
      buffers[i][capacity] = '\0';
    }
    if (std::apply(call, buffers) == 0) return false;
    std::array<std::size_t, kCount> lengths;
    bool cut = false;
    for (std::size_t i = 0; i < kCount; ++i) {
      buffers[i][capacity] = '\0';
      lengths[i] = std::strlen(buffers[i]);
      if (capacity >= kLargestBlankText && IsUntouched(buffers[i], lengths[i], capacity)) {
        lengths[i] = 0;
      }
      cut = cut || lengths[i] >= capacity - 1;
    }
    if (cut && capacity >= kLargestRead) return false;
    if (cut) continue;
    for (std::size_t i = 0; i < kCount; ++i) targets[i]->assign(buffers[i], lengths[i]);
    return true;
  }
}

// An identifier in the buffer that the library may write another one into.
class IdentifierBuffer {
 public:
  explicit IdentifierBuffer(const std::string& identifier) : fits(identifier.size() < sizeof text) {
    if (fits) std::memcpy(text, identifier.data(), identifier.size());
  }
  bool Fits() const { return fits; }
  char* Get() { return text; }
  const char* Text() {
    text[sizeof text - 1] = '\0';
    return text;
  }

 private:
  char text[QM_PROTOCOL_ID_BUFFER] = {};
  bool fits;
};

std::string BlankIdentifier() { return std::string(QM_NEW_PROTOCOL_BLANKS, ' '); }

// Result of a foreign call whose real result is 16 bits wide.
short LowerHalf(int result) { return static_cast<short>(result); }

}  // namespace

// --- life of the protocol ---

VXProtocol::VXProtocol(const ProtocolContext& owner) : context(owner) {}

VXProtocol::VXProtocol(const ProtocolContext& owner, const std::string& id) : context(owner) {
  Open(id);
}

VXProtocol::~VXProtocol() {
  try {
    Close();
  } catch (...) {
    // Without memory for a report the host's process must still go on, and the store must not count
    // the protocol as open.
    if (ready == 1 && !keepOpen) context.storage.Com_CloseProtocol(Id());
  }
}

template <class... Out>
bool VXProtocol::CheckReady(Out&... outputs) {
  (outputs.clear(), ...);
  return ready != 0 || Report(kNotReady, QM_HERE);
}

bool VXProtocol::Report(const std::string& message, const SourceStamp& source) const {
  context.errors.ReportError(message, source);
  return false;
}

bool VXProtocol::Open(const std::string& id) {
  IdentifierBuffer buffer(id);
  // Once the store has opened it, nothing may go wrong before this object knows its identifier.
  protocolId.reserve(QM_PROTOCOL_ID_BUFFER);
  ready = buffer.Fits() && context.storage.Com_OpenProtocol(buffer.Get()) == 1 ? 1 : 0;
  keepOpen = false;
  superProtocolOrder.clear();
  if (ready == 0) return Report("Cannot open protocol.", QM_HERE);
  protocolId = buffer.Text();
  return true;
}

bool VXProtocol::Attach(const std::string& id) {
  return AttachInState(ProtocolExists(context, id), id);
}

bool VXProtocol::AttachExisting(const std::string& id) {
  const int state = ProtocolExists(context, id);
  return (state != QM_PROTOCOL_MISSING || !context.storage.Com_IsProtocolExists) &&
         AttachInState(state, id);
}

bool VXProtocol::AttachInState(int state, const std::string& id) {
  if (state != QM_PROTOCOL_OPEN) return Open(id);
  protocolId = id;
  ready = 1;
  keepOpen = true;
  return true;
}

int VXProtocol::CreateNew() {
  Close();
  if (!Open(BlankIdentifier())) return 0;
  const std::string id = protocolId;
  if (Open(id)) return 1;
  // It is in the store since it was made, open, and nobody else knows of it.
  if (!EraseById(context, id)) CloseById(context, id);
  return 0;
}

bool VXProtocol::OpenClipboard() { return Open(kClipboardProtocol); }

bool VXProtocol::ReopenClipboard() {
  Close();
  return OpenClipboard();
}

int VXProtocol::OpenClipboardReference(const std::string& reference, bool activate) {
  const auto marker = reference.find(MarkersOf(Markers::Standard).identifier);
  if (marker == std::string::npos) return 0;
  return OpenFromReference(kClipboardProtocol + reference.substr(marker), activate,
                           Markers::Standard);
}

bool VXProtocol::Close() {
  if (!CheckReady()) return false;
  if (!superProtocolOrder.empty()) {
    PutKeyWord(section::kSuperProtocolOrder, keyword::kOrder, superProtocolOrder);
    superProtocolOrder.clear();
  }
  if (!keepOpen && context.storage.Com_CloseProtocol(Id()) == 0) return false;
  protocolId.clear();
  return true;
}

bool VXProtocol::Erase() {
  if (!CheckReady()) return false;
  const bool erased = context.storage.Com_EraseProtocol(Id()) != 0;
  // What the store keeps against all wishes is at least closed: this object lets go of it now.
  if (!erased && !keepOpen) context.storage.Com_CloseProtocol(Id());
  protocolId.clear();
  ready = 0;
  return erased;
}

bool VXProtocol::Copy(const std::string& sourceId) {
  keepOpen = false;
  bool copied = false;
  if (context.storage.Com_CopyProtocol) {
    IdentifierBuffer buffer(BlankIdentifier());
    protocolId.reserve(QM_PROTOCOL_ID_BUFFER);
    copied = context.storage.Com_CopyProtocol(sourceId.c_str(), buffer.Get()) != 0;
    protocolId = buffer.Text();
    ready = copied ? 1 : 0;
  } else {
    copied = CopyByBuffer(sourceId);
  }
  return copied || Report("Cannot copy protocol.", QM_HERE);
}

// For libraries that cannot copy.
bool VXProtocol::CopyByBuffer(const std::string& sourceId) {
  VXProtocol source(context, sourceId);
  std::vector<std::string_view> texts;
  const bool copied = source.GetBuffer(texts) && CreateNew() != 0 && PutBuffer(texts);
  if (!copied && ready != 0) Close();
  ready = copied ? 1 : 0;
  return copied;
}

int VXProtocol::ProtocolExists(const ProtocolContext& context, const std::string& id) {
  return context.storage.Com_IsProtocolExists(id.c_str());
}

bool VXProtocol::IsMissing(const ProtocolContext& context, const std::string& id) {
  return context.storage.Com_IsProtocolExists && ProtocolExists(context, id) == QM_PROTOCOL_MISSING;
}

bool VXProtocol::OpenById(const ProtocolContext& context, const std::string& id) {
  IdentifierBuffer buffer(id);
  return buffer.Fits() && context.storage.Com_OpenProtocol(buffer.Get()) == 1;
}

bool VXProtocol::CloseById(const ProtocolContext& context, const std::string& id) {
  return context.storage.Com_CloseProtocol(id.c_str()) != 0;
}

bool VXProtocol::EraseById(const ProtocolContext& context, const std::string& id) {
  return context.storage.Com_EraseProtocol(id.c_str()) != 0;
}

int VXProtocol::OpenFromReference(const std::string& reference, bool activate, Markers markers) {
  std::string id;
  if (!ExtractProtocolID(reference, id, markers)) return 0;
  switch (ProtocolExists(context, id)) {
    case QM_PROTOCOL_MISSING:
      return MakeAnew(id, reference, markers);
    case QM_PROTOCOL_HELD_BY_CALCULATION:
      return OpenHeldByCalculation(id, reference, activate, markers);
    default:
      return OpenExisting(id, reference, activate, markers);
  }
}

// The protocol belongs to a live calculation window, which goes on working with it.
int VXProtocol::LeaveToOwner(QmWindow owner, bool activate) {
  if (!activate) return 1;
  context.activator.Activate(owner);
  ownerActive = true;
  return 0;
}

int VXProtocol::OpenHeldByCalculation(const std::string& id, const std::string& reference,
                                      bool activate, Markers markers) {
  QmWindow owner = 0;
  if (context.storage.Com_GetOwnerHWND(id.c_str(), &owner) == 0) {
    owner = 0;
    Report("Cannot get owner hwnd", QM_HERE);
  }
  if (platform::IsLiveWindow(owner)) return LeaveToOwner(owner, activate);

  // The window that held it is gone; an earlier owner may have taken it back. This asks the
  // protocol that the object has open, if any.
  std::string oldOwner;
  if (!GetGlobalData(global::kOldOwnerWindow, oldOwner)) return 0;
  const auto oldWindow = static_cast<QmWindow>(ParseInt(oldOwner));
  if (platform::IsLiveWindow(oldWindow)) return LeaveToOwner(oldWindow, activate);
  Erase();
  return MakeAnew(id, reference, markers);
}

int VXProtocol::OpenExisting(const std::string& id, const std::string& reference, bool activate,
                             Markers markers) {
  if (!Open(id)) return 0;
  std::string owner;
  if (GetGlobalData(global::kOwnerWindow, owner)) {
    const auto window = static_cast<QmWindow>(ParseInt(owner));
    if (platform::IsLiveWindow(window)) {
      Close();
      ready = 0;
      return LeaveToOwner(window, activate);
    }
  }
  Erase();
  return MakeAnew(id, reference, markers);
}

int VXProtocol::MakeAnew(const std::string& id, const std::string& reference, Markers markers) {
  if (!Open(id) || !SetVersion(1, 0)) return 0;
  return PutBufferFromReference(reference, markers) ? 1 : 0;
}

// --- sections, global data, data parameters ---

bool VXProtocol::GetKeyWord(TextRef section, TextRef keyword, std::string& value) {
  if (!CheckReady(value)) return false;
  return ReadGrowing(
             [&](char* out) {
               return context.storage.Com_GetKeyWord(Id(), section.Get(), keyword.Get(), out);
             },
             value) ||
         Report(std::string("Cannot read from section ") + section.Get() + ", keyword " +
                    keyword.Get() + ".",
                QM_HERE);
}

bool VXProtocol::GetKeyWordInt(TextRef section, TextRef keyword, int& value) {
  std::string text;
  if (!GetKeyWord(section, keyword, text)) return false;
  value = ParseInt(text);
  return true;
}

bool VXProtocol::PutKeyWord(TextRef section, TextRef keyword, TextRef value) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutKeyWord(Id(), section.Get(), keyword.Get(), value.Get()) != 0 ||
         Report(std::string("Cannot write to section ") + section.Get() + ", keyword " +
                    keyword.Get() + ".",
                QM_HERE);
}

bool VXProtocol::PutKeyWordInt(TextRef section, TextRef keyword, int value) {
  return PutKeyWord(section, keyword, std::to_string(value));
}

bool VXProtocol::EraseKeyWord(TextRef section, TextRef keyword) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutKeyWord(Id(), section.Get(), keyword.Get(), nullptr) != 0 ||
         Report(std::string("Cannot erase keyword ") + keyword.Get() + " in section " +
                    section.Get() + ".",
                QM_HERE);
}

bool VXProtocol::EraseSection(TextRef section) {
  return CheckReady() && context.storage.Com_EraseSection(Id(), section.Get()) != 0;
}

bool VXProtocol::GetKeyList(TextRef section, std::vector<std::string>& keywords) {
  std::string list;
  if (!CheckReady(keywords)) return false;
  if (!ReadGrowing(
          [&](char* out) { return context.storage.Com_GetKeyList(Id(), section.Get(), out); },
          list)) {
    return Report(std::string("Cannot read list key words from section ") + section.Get() + ".",
                  QM_HERE);
  }
  keywords = SplitList(list, ";");
  return true;
}

int VXProtocol::GetKeyCount(TextRef section) {
  if (!CheckReady()) return 0;
  const int count = context.storage.Com_GetKeyList(Id(), section.Get(), nullptr);
  if (count == 0) {
    Report(std::string("Cannot read list key words from section ") + section.Get() + ".", QM_HERE);
  }
  return count;
}

bool VXProtocol::GetOneKey(short index, std::string& keyword, std::string& value) {
  if (!CheckReady(keyword, value)) return false;
  return ReadGrowing(
             [&](char* key, char* text) {
               return context.storage.Com_GetOneKey(Id(), index, key, text);
             },
             keyword, value) ||
         Report("Cannot get one key " + std::to_string(index) + ".", QM_HERE);
}

bool VXProtocol::GetGlobalData(TextRef item, std::string& value) {
  if (!CheckReady(value)) return false;
  return ReadGrowing(
             [&](char* out) { return context.storage.Com_GetGlobalData(Id(), item.Get(), out); },
             value) ||
         Report(std::string("Cannot read global data, item: ") + item.Get(), QM_HERE);
}

bool VXProtocol::PutGlobalData(TextRef item, TextRef value) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutGlobalData(Id(), item.Get(), value.Get()) != 0 ||
         Report("Cannot write global data", QM_HERE);
}

bool VXProtocol::GetModelID(std::string& modelId) {
  if (!CheckReady(modelId)) return false;
  return ReadGrowing([&](char* out) { return context.storage.Com_GetModelID(Id(), out); },
                     modelId) ||
         Report("Cannot read model ID", QM_HERE);
}

bool VXProtocol::PutModelID(TextRef modelId) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutModelID(Id(), modelId.Get()) != 0 ||
         Report("Cannot write model ID", QM_HERE);
}

bool VXProtocol::GetDataCount(short& count) {
  if (!CheckReady()) return false;
  return context.storage.Com_GetDataCount(Id(), &count) != 0 ||
         Report("Cannot data count", QM_HERE);
}

bool VXProtocol::GetDataItem(short index, std::string& name, std::string& value,
                             std::string& unit) {
  if (!CheckReady(name, value, unit)) return false;
  return ReadGrowing(
             [&](char* nameOut, char* valueOut, char* unitOut) {
               return context.storage.Com_GetDataItem(Id(), index, nameOut, valueOut, unitOut);
             },
             name, value, unit) ||
         Report("Cannot read data item", QM_HERE);
}

bool VXProtocol::GetDataParam(TextRef name, std::string& value, std::string& unit) {
  if (!CheckReady(value, unit)) return false;
  return FindDataParam(name, value, unit) || Report("Cannot read data param", QM_HERE);
}

bool VXProtocol::FindDataParam(TextRef name, std::string& value, std::string& unit) {
  if (!CheckReady(value, unit)) return false;
  return ReadGrowing(
      [&](char* valueOut, char* unitOut) {
        return context.storage.Com_GetDataParam(Id(), name.Get(), valueOut, unitOut);
      },
      value, unit);
}

bool VXProtocol::PutDataParam(TextRef name, TextRef value, TextRef unit) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutDataParam(Id(), name.Get(), value.Get(), unit.Get()) != 0 ||
         Report("Cannot write data param", QM_HERE);
}

bool VXProtocol::SetParam(TextRef name, const std::string& value, TextRef unit) {
  return IsNumber(value) ? PutDataParam(name, value, unit) : WriteLinkParam(name, value);
}

bool VXProtocol::WriteDescription(TextRef keyword, TextRef text) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutKeyWord(Id(), section::kVarDescriptions, keyword.Get(),
                                        text.Get()) != 0 ||
         Report("Cannot write description", QM_HERE);
}

bool VXProtocol::GetBuffer(std::vector<std::string_view>& texts) {
  QmStringList* list = nullptr;
  if (!CheckReady(texts)) return false;
  if (context.storage.Com_GetBuffer(Id(), &list) == 0 || list == nullptr) {
    return Report("Cannot read buffer data", QM_HERE);
  }
  texts = TextsOf(list);
  return true;
}

bool VXProtocol::PutBuffer(const std::vector<std::string_view>& texts) {
  if (!CheckReady()) return false;
  StringList list(texts);
  return context.storage.Com_PutBuffer(Id(), list.Get()) != 0 ||
         Report("Cannot write buffer data", QM_HERE);
}

bool VXProtocol::GetViewKey(std::string& text) {
  return CheckReady(text) &&
         ReadGrowing([&](char* out) { return context.storage.Com_GetViewKey(Id(), out); }, text);
}

bool VXProtocol::PutViewKey(TextRef text) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutViewKey(Id(), text.Get()) != 0 ||
         Report("Cannot write view.", QM_HERE);
}

bool VXProtocol::GetDataFile(std::string& fileName) {
  if (!CheckReady(fileName)) return false;
  return ReadGrowing([&](char* out) { return context.storage.Com_GetDataFile(Id(), out); },
                     fileName) ||
         Report("Cannot read DataFile name", QM_HERE);
}

bool VXProtocol::GetStandard(std::string& text) {
  return CheckReady(text) &&
         ReadGrowing([&](char* out) { return context.storage.Com_GetStandard(Id(), out); }, text);
}

bool VXProtocol::PutStandard(TextRef text) {
  return CheckReady() && context.storage.Com_PutStandard(Id(), text.Get()) != 0;
}

bool VXProtocol::GetPartKey(std::string& text) {
  return CheckReady(text) &&
         ReadGrowing([&](char* out) { return context.storage.Com_GetPartKey(Id(), out); }, text);
}

bool VXProtocol::PutPartKey(TextRef text) {
  return CheckReady() && context.storage.Com_PutPartKey(Id(), text.Get()) != 0;
}

bool VXProtocol::GetVersion(int& major, int& minor) {
  return context.storage.Com_GetVersion(Id(), &major, &minor) != 0;
}

bool VXProtocol::SetVersion(int major, int minor) {
  return context.storage.Com_SetVersion(Id(), major, minor) != 0;
}

// --- links ---

bool VXProtocol::CreateUniquePID(const ProtocolContext& context, std::string& id) {
  id.clear();
  if (ReadGrowing([&](char* out) { return context.links.Link_CreateUniquePID(out); }, id)) {
    return true;
  }
  context.errors.ReportError("Cannot create ProtocolID", QM_HERE);
  return false;
}

int VXProtocol::GetLinksFromCount(bool all) {
  if (!CheckReady()) return 0;
  const int count = context.links.Link_GetLinksFromCount(Id());
  if (all) return count;
  int protocolLinks = 0;
  for (int index = 1; index <= count; ++index) {
    std::string first;
    std::string second;
    int enabled = 0;
    int level = 0;
    if (GetLinkFrom(index, first, second, enabled, level) && !second.starts_with('#')) {
      ++protocolLinks;
    }
  }
  return protocolLinks;
}

bool VXProtocol::GetLinkFrom(int index, std::string& first, std::string& second, int& enabled,
                             int& level) {
  enabled = 0;
  level = 0;
  if (!CheckReady(first, second)) return false;
  const auto function = reinterpret_cast<void*>(context.links.Link_GetLinkFrom.pointer);
  return (function != nullptr &&
          ReadGrowing(
              [&](char* firstOut, char* secondOut) {
                const std::uintptr_t words[] = {platform::Word(Id()),     platform::Word(index),
                                                platform::Word(firstOut), platform::Word(secondOut),
                                                platform::Word(&enabled), platform::Word(&level)};
                return LowerHalf(platform::CallForeign(function, words, std::size(words)));
              },
              first, second)) ||
         Report("Cannot read LinkFrom", QM_HERE);
}

bool VXProtocol::GetLinkFrom2(TextRef linkName, std::string& text, int& enabled, int& level) {
  enabled = 0;
  level = 0;
  if (!CheckReady(text)) return false;
  const auto function = reinterpret_cast<void*>(context.links.Link_GetLinkFrom2.pointer);
  return (function != nullptr &&
          ReadGrowing(
              [&](char* out) {
                const std::uintptr_t words[] = {platform::Word(Id()),
                                                platform::Word(linkName.Get()), platform::Word(out),
                                                platform::Word(&enabled), platform::Word(&level)};
                return LowerHalf(platform::CallForeign(function, words, std::size(words)));
              },
              text)) ||
         Report("Cannot read LinkFrom", QM_HERE);
}

bool VXProtocol::EnableLinkFrom(TextRef linkName, int enable) {
  if (!CheckReady()) return false;
  return context.links.Link_EnableLinkFrom(Id(), linkName.Get(), enable) != 0 ||
         Report("Cannot enable LinkFrom", QM_HERE);
}

bool VXProtocol::SetLevelLinkFrom(TextRef linkName, int first, int second) {
  if (!CheckReady()) return false;
  return context.links.Link_SetLevelLinkFrom(Id(), linkName.Get(), first, second) != 0 ||
         Report("Cannot set LevelLinkFrom", QM_HERE);
}

bool VXProtocol::SetLinkFrom(TextRef name, TextRef text) {
  if (!CheckReady()) return false;
  return context.links.Link_SetLinkFrom(Id(), name.Get(), text.Get()) != 0 ||
         Report("Cannot set LinkFrom", QM_HERE);
}

bool VXProtocol::WriteLinkParam(TextRef name, const std::string& expression) {
  return SetLinkFrom(name, "#" + expression) || Report("Cannot write link param", QM_HERE);
}

bool VXProtocol::DeleteLinkFrom(TextRef linkName) {
  if (!CheckReady()) return false;
  return context.links.Link_DeleteLinkFrom(Id(), linkName.Get()) != 0 ||
         Report("Cannot delete LinkFrom", QM_HERE);
}

bool VXProtocol::GetLinkFromParentList(int index, std::vector<std::string>& identifiers) {
  std::string list;
  if (!CheckReady(identifiers)) return false;
  if (!ReadGrowing(
          [&](char* out) { return context.links.Link_GetLinkFromParentList(Id(), index, out); },
          list)) {
    return Report("Cannot read LinkFrom parent list no. " + std::to_string(index) + ".", QM_HERE);
  }
  identifiers = SplitList(list, ",");
  return true;
}

bool VXProtocol::GetLinkFromParentList2(TextRef linkName, std::vector<std::string>& identifiers) {
  std::string list;
  if (!CheckReady(identifiers)) return false;
  if (!ReadGrowing(
          [&](char* out) {
            return context.links.Link_GetLinkFromParentList2(Id(), linkName.Get(), out);
          },
          list)) {
    return Report(std::string("Cannot read LinkFrom parent list ") + linkName.Get() + ".", QM_HERE);
  }
  identifiers = SplitList(list, ",");
  return true;
}

bool VXProtocol::GetParentsList(std::vector<std::string>& identifiers) {
  std::string list;
  if (!CheckReady(identifiers)) return false;
  if (!ReadGrowing([&](char* out) { return context.links.Link_GetParentsList(Id(), out); }, list)) {
    return Report("Cannot read parent list no. 0.", QM_HERE);  // the list of the whole protocol
  }
  identifiers = SplitList(list, ",");
  return true;
}

int VXProtocol::GetLinksToCount() {
  return CheckReady() ? context.links.Link_GetLinksToCount(Id()) : 0;
}

bool VXProtocol::GetLinkTo(int index, std::string& first, std::string& second) {
  if (!CheckReady(first, second)) return false;
  return ReadGrowing(
             [&](char* firstOut, char* secondOut) {
               return context.links.Link_GetLinkTo(Id(), index, firstOut, secondOut);
             },
             first, second) ||
         Report("Cannot read LinkTo", QM_HERE);
}

bool VXProtocol::DeleteLinkTo(TextRef first, TextRef second) {
  if (!CheckReady()) return false;
  return context.links.Link_DeleteLinkTo(Id(), first.Get(), second.Get()) != 0 ||
         Report("Cannot delete LinkTo", QM_HERE);
}

bool VXProtocol::SetLinkTo(TextRef first, TextRef second) {
  if (!CheckReady()) return false;
  return context.links.Link_SetLinkTo(Id(), first.Get(), second.Get()) != 0 ||
         Report("Cannot set LinkTo", QM_HERE);
}

bool VXProtocol::Translate(const ProtocolContext& context, std::string& text, int capacity) {
  const std::size_t room =
      std::max<std::size_t>(text.size(), static_cast<std::size_t>(std::max(capacity, 0)));
  std::string buffer = text;
  buffer.resize(room + 1, '\0');
  const bool translated = context.links.Link_Translate(buffer.data(), static_cast<int>(room)) != 0;
  text = translated ? std::string(buffer.c_str()) : std::string();
  if (!translated) context.errors.ReportError("Cannot translate", QM_HERE);
  return translated;
}

// --- super protocols ---

bool VXProtocol::IsSuperProtocol(int& answer) {
  short value = 0;
  if (!CheckReady()) return false;
  if (context.storage.Com_IsSuperProtocol(Id(), &value) == 0) {
    return Report("Cannot check super protocol", QM_HERE);
  }
  answer = value;
  return true;
}

bool VXProtocol::GetProtocolList(std::vector<std::string>& members) {
  std::string list;
  if (!CheckReady(members)) return false;
  if (!ReadGrowing([&](char* out) { return context.storage.Com_GetProtocolList(Id(), out); },
                   list)) {
    return Report("Cannot get protocol list", QM_HERE);
  }
  // A saved order that covers the same members has the same total length.
  std::string order;
  if (GetKeyWord(section::kSuperProtocolOrder, keyword::kOrder, order)) {
    order += ';';
    if (order.size() == list.size()) list = order;
  }
  members = SplitList(list, ";");
  return true;
}

bool VXProtocol::GetProtocolCount(short& count) {
  if (!CheckReady()) return false;
  return context.storage.Com_GetProtocolCount(Id(), &count) != 0 ||
         Report("Cannot get protocol count", QM_HERE);
}

bool VXProtocol::GetProtocol(TextRef memberName, std::string& memberId) {
  if (!CheckReady(memberId)) return false;
  return ReadGrowing(
             [&](char* out) {
               return context.storage.Com_GetProtocol(Id(), memberName.Get(), out);
             },
             memberId) ||
         Report("Cannot get protocol", QM_HERE);
}

bool VXProtocol::PutProtocol(TextRef memberName, TextRef memberId) {
  if (!CheckReady()) return false;
  return context.storage.Com_PutProtocol(Id(), memberName.Get(), memberId.Get()) != 0 ||
         Report("Cannot write protocol", QM_HERE);
}

bool VXProtocol::RemoveProtocol(TextRef memberName) {
  if (!CheckReady()) return false;
  return context.storage.Com_RemoveProtocol(Id(), memberName.Get()) != 0 ||
         Report("Cannot remove protocol", QM_HERE);
}

// --- reference texts ---

bool VXProtocol::ExtractProtocolID(const std::string& reference, std::string& id, Markers markers) {
  const auto marker = reference.find(MarkersOf(markers).identifier);
  if (marker == std::string::npos) return false;
  id = reference.substr(0, marker);
  return true;
}

bool VXProtocol::MakeReference(std::string& reference, Markers markers) {
  const MarkerPair& pair = MarkersOf(markers);
  // The items are taken over at once: they are the library's and do not outlive the next read.
  std::vector<std::string_view> texts;
  GetBuffer(texts);
  std::size_t length = protocolId.size() + pair.identifier.size();
  for (std::string_view text : texts) length += text.size() + pair.element.size();
  std::string joined;
  joined.reserve(length);
  joined.append(protocolId).append(pair.identifier);
  for (std::string_view text : texts) joined.append(text).append(pair.element);

  std::string id;
  if (GetKeyWord(section::kObject, keyword::kProtId, id) && !id.empty()) {
    joined.replace(0, protocolId.size(), id);
  }
  reference = std::move(joined);
  return true;
}

bool VXProtocol::PutBufferFromReference(const std::string& reference, Markers markers) {
  const MarkerPair& pair = MarkersOf(markers);
  const auto marker = reference.find(pair.identifier);
  if (marker == std::string::npos) return false;
  const std::string_view items =
      std::string_view(reference).substr(marker + pair.identifier.size());
  return PutBuffer(SplitTerminated(items, pair.element));
}

}  // namespace quillmar
