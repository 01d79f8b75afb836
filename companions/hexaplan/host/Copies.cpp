#include "hexaplan/host/Copies.h"

#include <algorithm>

#include "hexaplan/host/HostVocabulary.h"

namespace hexaplan {

namespace {

// In a list of parts: one that is none of this calculation any more.
constexpr char kNoPart[] = "-";

// What ties a protocol to others. A part that is placed anew has no part in that.
constexpr const char* kTies[] = {kLinksFromSection, kLinksToSection, kViewOrderSection,
                                 kJointSection, kJointDataSection};
// What says that an object stands in the CAD.
constexpr const char* kStanding[] = {kDrawn, kFromCad, kUpdate};

// Every result bears its own identifier as its reference; a copy still bears its source's.
bool IsCopy(const ProtocolRecord& record, CopyUse use) {
  const bool own = record.KeyWord(kObjectSection, kObjectProtocol) == record.Id() &&
                   record.KeyWord(kCadSection, kHasIdentity) == "1" &&
                   record.Global(kReference) != record.Id();
  const std::string replaced = record.KeyWord(kCadSection, kReplacedProtocol);
  return own && (use == CopyUse::Place || (!replaced.empty() && replaced != record.Id()));
}

// The other parts of the calculation stay with the source.
std::string OnlyOwnPart(const ProtocolRecord& record) {
  const std::string parts = record.KeyWord(kHostSection, kPartList);
  if (parts.empty()) return parts;
  const int count = 1 + static_cast<int>(std::count(parts.begin(), parts.end(), ','));
  const std::string own = record.KeyWord(kHostSection, kPartNumber);
  std::string list;
  for (int part = 1; part <= count; ++part) {
    list += part > 1 ? "," : "";
    list += std::to_string(part) == own ? record.Id() : kNoPart;
  }
  return list;
}

void Detach(ProtocolRecord& copy) {
  const std::string parts = OnlyOwnPart(copy);
  if (!parts.empty()) copy.PutKeyWord(kHostSection, kPartList, parts);
  for (const char* section : kTies) copy.EraseSection(section);
  for (const char* keyword : kStanding) copy.PutKeyWord(kCadSection, keyword, "0");
  // A copy of what once replaced another part.
  copy.EraseKeyWord(kCadSection, kReplacedProtocol);
  // No object bears it yet, and the views that the module makes of it would take this for their
  // own.
  copy.EraseKeyWord(kObjectSection, kObjectProtocol);
}

}  // namespace

Copy TakeUpCopy(const ProtocolStore& store, CopyUse use) {
  const std::vector<std::string> ids = store.Ids();
  for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
    auto record = ProtocolRecord::OpenShared(store, *id);
    if (!record || !IsCopy(*record, use)) continue;
    if (use == CopyUse::Place) Detach(*record);
    record->PutKeyWord(kCadSection, kHasIdentity, "0");
    Copy copy = {*id, record->KeyWord(kCadSection, kReplacedProtocol)};
    return record->Close() ? copy : Copy();
  }
  return {};
}

}  // namespace hexaplan
