// Exports of the protocol commands: questions about protocols, copies, new protocols, and the
// commands on the model.
#include <cstring>

#include "Forward.h"
#include "base/Texts.h"
#include "commands/GroupInsertTimer.h"
#include "commands/LinkRefresh.h"
#include "commands/Optimization.h"
#include "commands/ProtocolCopies.h"
#include "commands/ProtocolQueries.h"
#include "quillmar/Exports.h"

using quillmar::Forward;
using quillmar::NewProtocol;
using quillmar::ProtocolTexts;
using quillmar::QuillmarApp;
using quillmar::Text;

namespace {

constexpr std::size_t kLongestItem = 1023;

// Into a buffer of the caller that is large enough by agreement; a null buffer is skipped.
void Give(const std::string& text, char* buffer) {
  if (buffer != nullptr) std::memcpy(buffer, text.c_str(), text.size() + 1);
}

void Give(const ProtocolTexts& texts, char* identifier, char* reference) {
  Give(texts.identifier, identifier);
  Give(texts.reference, reference);
}

// True when the text and its NUL have room; else `capacity` receives the room needed.
bool Fits(const std::string& text, int room, int* capacity) {
  const int length = static_cast<int>(text.size());
  if (length < room) return true;
  if (capacity != nullptr) *capacity = length + 1;
  return false;
}

int CreateNamed(const char* name, NewProtocol kind, char* protocolId, char* reference,
                const char* caption) {
  return Forward(name, 0, [&](QuillmarApp& app) {
    ProtocolTexts texts;
    if (!quillmar::CreateNamedProtocol(app.Services(), kind, caption, texts)) return 0;
    Give(texts, protocolId, reference);
    return 1;
  });
}

}  // namespace

// --- questions ---

int QM_CDECL IsSmartPart(const char* reference) {
  return Forward("IsSmartPart", 0, [&](QuillmarApp& app) {
    return quillmar::IsSmartPart(app.Services(), Text(reference));
  });
}

int QM_CDECL IsFeaturePositive(const char* protocolId, int* positive) {
  return Forward("IsFeaturePositive", 0, [&](QuillmarApp& app) {
    const auto answer = quillmar::IsFeaturePositive(app.Services(), Text(protocolId));
    if (answer && positive != nullptr) *positive = *answer ? 1 : 0;
    return answer ? 1 : 0;
  });
}

int QM_CDECL GetProtocolItem(const char* protocolId, const char* section, const char* keyword,
                             char* value) {
  return Forward("GetProtocolItem", 0, [&](QuillmarApp& app) {
    const auto item =
        quillmar::GetProtocolItem(app.Services(), Text(protocolId), Text(section), Text(keyword));
    if (!item) return 0;
    Give(item->substr(0, kLongestItem), value);
    return 1;
  });
}

int QM_CDECL GetProtocolType(const char* reference, char* calculationName, int* partType) {
  if (calculationName != nullptr) *calculationName = '\0';
  if (partType != nullptr) *partType = 0;
  return Forward("GetProtocolType", 0, [&](QuillmarApp& app) {
    const auto type = quillmar::GetProtocolType(app.Services(), Text(reference),
                                                calculationName != nullptr, partType != nullptr);
    if (!type) return 0;
    Give(type->calculation, calculationName);
    if (partType != nullptr) *partType = type->partType;
    return static_cast<int>(type->kind);
  });
}

int QM_CDECL GetAllMCWProtocolIDs(const char* reference, char* list, int* capacity) {
  return Forward("GetAllMCWProtocolIDs", 0, [&](QuillmarApp& app) {
    const auto items = quillmar::GetAllMcwProtocolIds(app.Services(), Text(reference));
    if (!items) return 0;
    const std::string joined = quillmar::JoinList(*items, ',');
    if (!Fits(joined, capacity != nullptr ? *capacity : 0, capacity)) return -1;
    Give(joined, list);
    return static_cast<int>(items->size());
  });
}

int QM_STDCALL GetPartInformation(const char* protocolId, int change, int modelChanged, int* local,
                                  char* modelPath, char* filePath, char* caption) {
  return Forward("GetPartInformation", 0, [&](QuillmarApp& app) {
    const auto information = quillmar::GetPartInformation(app.Services(), Text(protocolId),
                                                          change != 0, modelChanged != 0);
    if (!information) return 0;
    if (local != nullptr) *local = information->local;
    Give(information->modelPath, modelPath);
    Give(information->filePath, filePath);
    Give(information->caption, caption);
    return 1;
  });
}

// --- copies and new protocols ---

int QM_CDECL CopyProtocol(const char* reference, char* newId, char* newReference) {
  return Forward("CopyProtocol", 0, [&](QuillmarApp& app) {
    ProtocolTexts texts;
    if (!quillmar::CopyProtocol(app.Services(), Text(reference), texts)) return 0;
    Give(texts, newId, newReference);
    return 1;
  });
}

int QM_CDECL CreateUniqueCopy(void) {
  return Forward("CreateUniqueCopy", 0, [](QuillmarApp& app) {
    return quillmar::CreateUniqueCopy(app.Services()) ? 1 : 0;
  });
}

int QM_CDECL CreateUserProtocol(char* protocolId, char* reference, const char* caption) {
  return CreateNamed("CreateUserProtocol", NewProtocol::UserPart, protocolId, reference, caption);
}

int QM_CDECL CreateAssemblyProtocol(char* protocolId, char* reference, const char* caption) {
  return CreateNamed("CreateAssemblyProtocol", NewProtocol::Assembly, protocolId, reference,
                     caption);
}

int QM_CDECL CreatePartProtocol(const char* dataFile, const char* standard, const char* viewKey,
                                const char* parameters, char* protocolId, char* reference,
                                int* capacity) {
  const int room = capacity != nullptr ? *capacity : 0;
  if (capacity != nullptr) *capacity = 0;
  return Forward("CreatePartProtocol", 0, [&](QuillmarApp& app) {
    ProtocolTexts texts;
    if (!quillmar::CreatePartProtocol(app.Services(),
                                      {.dataFile = Text(dataFile),
                                       .standard = Text(standard),
                                       .viewKey = Text(viewKey),
                                       .parameters = Text(parameters)},
                                      texts) ||
        !Fits(texts.reference, room, capacity)) {
      return 0;
    }
    Give(texts, protocolId, reference);
    return 1;
  });
}

// --- commands on the model ---

int QM_CDECL RefreshAllLinks(void) {
  return Forward("RefreshAllLinks", 0,
                 [](QuillmarApp& app) { return quillmar::RefreshAllLinks(app.Commands()); });
}

int QM_CDECL CallOptim(void) {
  return Forward("CallOptim", 0,
                 [](QuillmarApp& app) { return quillmar::CallOptim(app.Commands()); });
}

int QM_CDECL GMInsertNextObject(void) {
  return Forward("GMInsertNextObject", 0,
                 [](QuillmarApp& app) { return static_cast<int>(app.GroupInserts().Arm()); });
}
