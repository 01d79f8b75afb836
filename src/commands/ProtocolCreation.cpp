#include "commands/ProtocolCreation.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "parts/ParameterLists.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kIso = "ISO";
constexpr const char* kNoLanguage = "NO";
constexpr const char* kModelView = "MODEL";
constexpr const char* kUserPartModel = "UserPart";
constexpr int kUserPartType = 2;

struct KindRow {
  NewProtocol kind;
  const char* dataFile;
  int typeOfPart;
  bool local;  // made for this design only, and known to be so
  bool smart;
};

constexpr KindRow kKinds[] = {
    {NewProtocol::UserPart, kUserPartDataFile, kUserPartType, false, true},
    {NewProtocol::Assembly, kAssemblyDataFile, kAssemblyType, false, false},
    {NewProtocol::ConnectedAssembly, kAssemblyDataFile, kAssemblyType, true, true},
};

const KindRow& RowOf(NewProtocol kind) {
  return *std::find_if(std::begin(kKinds), std::end(kKinds),
                       [&](const KindRow& row) { return row.kind == kind; });
}

bool WriteStandards(VXProtocol& protocol) {
  return protocol.PutGlobalData(global::kStandard, kIso) &&
         protocol.PutGlobalData(global::kPreferredStandard, kIso) &&
         protocol.PutGlobalData(global::kLanguage, kNoLanguage);
}

bool TakeTexts(VXProtocol& protocol, ProtocolTexts& texts) {
  texts.identifier = protocol.GetProtocolID();
  return protocol.MakeReference(texts.reference, Markers::Standard);
}

}  // namespace

bool FillNewProtocol(VXProtocol& protocol, NewProtocol kind) {
  const KindRow& row = RowOf(kind);
  return protocol.CreateNew() != 0 && WriteStandards(protocol) &&
         protocol.PutKeyWord(section::kMain, keyword::kDataFile, row.dataFile) &&
         protocol.PutViewKey(kModelView) &&
         protocol.PutGlobalData(global::kModel, kUserPartModel) &&
         protocol.SetTypeOfPart(row.typeOfPart) &&
         (!row.local || protocol.PutCadx(keyword::kReallySmartPart, "1")) &&
         (!row.smart || protocol.PutCadx(keyword::kSmartPart, "1"));
}

bool WriteNameItems(VXProtocol& protocol, const std::string& name) {
  return protocol.PutGlobalData(global::kCaption, name) &&
         protocol.PutKeyWord(section::kGrupova, keyword::kUseUserDescription, "1") &&
         protocol.PutKeyWord(section::kGrupova, keyword::kUserDescription, name) &&
         protocol.PutKeyWord(section::kObject, keyword::kCadDescriptionWritten, name);
}

bool InitializeCalculation(VXProtocol& protocol, const char* dataFile) {
  return WriteStandards(protocol) &&
         protocol.PutKeyWord(section::kMain, keyword::kDataFile, dataFile) &&
         protocol.PutCadx(keyword::kRecalcNew, "1") && protocol.PutCadx(keyword::kSmartPart, "1");
}

bool CreateNamedProtocol(const PartServices& services, NewProtocol kind, const char* caption,
                         ProtocolTexts& texts) {
  VXProtocol protocol(services.protocols);
  return FillNewProtocol(protocol, kind) &&
         (caption == nullptr || WriteNameItems(protocol, caption)) && TakeTexts(protocol, texts);
}

bool CreatePartProtocol(const PartServices& services, const PartRequest& request,
                        ProtocolTexts& texts) {
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0 || !protocol.PutGlobalData(global::kStandard, request.standard) ||
      !protocol.PutGlobalData(global::kLanguage, kNoLanguage) ||
      !protocol.PutKeyWord(section::kMain, keyword::kDataFile, request.dataFile) ||
      !protocol.PutViewKey(request.viewKey) || !protocol.SetTypeOfPart(kAssemblyType) ||
      !ApplyParameterList(protocol, services.session, request.parameters, {})) {
    return false;
  }
  return TakeTexts(protocol, texts);
}

}  // namespace quillmar
