#include "commands/ProtocolCopies.h"

#include "base/Texts.h"
#include "commands/SelectionStep.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

// A copy has no links and is no part of a bolted connection.
constexpr const char* kNotCopied[] = {section::kLinksFrom, section::kLinksTo, section::kMcwData,
                                      section::kMcwPartsOfCopies};

}  // namespace

bool CopyProtocol(const PartServices& services, const std::string& reference,
                  ProtocolTexts& texts) {
  std::string source;
  if (!VXProtocol::CreateUniquePID(services.protocols, texts.identifier) ||
      !VXProtocol::ExtractProtocolID(reference, source, Markers::Standard) || source.empty()) {
    return false;
  }
  VXProtocol copy(services.protocols);
  if (copy.OpenFromReference(ReplaceAll(reference, source, texts.identifier), false,
                             Markers::Standard) == 0) {
    if (copy.IsReady()) copy.Erase();
    return false;
  }
  for (const char* name : kNotCopied) copy.EraseSection(name);
  return copy.MakeReference(texts.reference, Markers::Standard);
}

bool CopyUnderOwnIdentity(VXProtocol& source, VXProtocol& copy) {
  if (!copy.Copy(source.GetProtocolID())) return false;
  if (copy.PutKeyWord(section::kObject, keyword::kProtId, copy.GetProtocolID())) return true;
  copy.Erase();
  return false;
}

bool CreateUniqueCopy(const PartServices& services) {
  WorkingCopy selected(services);
  if (!OpenSelected(services, selected)) return false;
  VXProtocol copy(services.protocols);
  if (!CopyUnderOwnIdentity(selected.Protocol(), copy)) return false;
  std::string reference;
  copy.MakeReference(reference, Markers::Standard);
  // The CAD knows the object by the identifier that it has carried so far.
  const std::string objectId = selected.Protocol().GetProtocolID();
  if (services.driver.ConnectProtocol(objectId.c_str(), reference.c_str()) != 0) return true;
  copy.Erase();
  return false;
}

}  // namespace quillmar
