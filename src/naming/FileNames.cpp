#include "naming/FileNames.h"

#include <cstring>
#include <optional>
#include <utility>

#include "base/RegistryKey.h"
#include "base/Texts.h"
#include "naming/NameTokens.h"
#include "naming/SafeFileName.h"
#include "platform/Dialogs.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr const char* kGeneralSection = "OptGeneral";
constexpr const char* kLastQuestionPath = "LastQuestionPath";
constexpr const char* kFirstQuestionPath = "c:\\";
constexpr int kTextAskFolder = 112;  // "%s" in it is the file name
constexpr int kDialogBuffer = 1024;
constexpr std::uint32_t kRemoveSpaces = 1;

// Settings of local and of shared parts bear the same names behind different words.
struct SettingNames {
  const char* fileName;
  const char* folderType;
  const char* folder;
  const char* structure;
  const char* workspaceSubFolder;
};

constexpr SettingNames kLocalNames{"LocalFileName", "LocalFolderType", "LocalFolder",
                                   "LocalStructure", "LocalWorkspaceSubFolder"};
constexpr SettingNames kSharedNames{"SharedFileName", "SharedFolderType", "SharedFolder",
                                    "SharedStructure", "SharedWorkspaceSubFolder"};

// Folders that the CAD resolves when it saves the file.
struct MarkerRow {
  std::uint32_t folderType;
  const char* marker;
};

constexpr MarkerRow kMarkers[] = {
    {kAssemblyFolder, "<ASM>\\"},
    {kWorkspaceFolder, "<WORKSPACE>\\"},
    {kLibraryFolder, "<LIB>\\"},
    {kContentLibraryFolder, "<CONTENTLIB>\\"},
};

void ReplaceSpaces(std::string& name, std::uint32_t rule) {
  if (rule == 0) return;
  name = ReplaceAll(name, " ", rule == kRemoveSpaces ? "" : "_");
}

class FileNameMaker {
 public:
  FileNameMaker(const FileNameContext& context, const FileNameRequest& request)
      : context(context), request(request), names(request.local ? kLocalNames : kSharedNames) {}

  // The name and folder by the user's rules; false when he cancelled a question.
  bool Make() {
    ReadSettings();
    if (request.local) AppendIdentifierToken();
    name = ExpandNameTemplate(name, request.protocol, context.ids);
    ReplaceSpaces(name, ReadNumber("ReplaceSpaces"));
    if (name.empty()) folderType = kAskFile;
    name += "." + request.extension;
    MakeSafeFileName(name);
    if (!request.wantsFolder()) folderType = kNoFolderRule;
    if (!FindFolder()) return false;
    EnsureTrailingBackslash(folder);
    if (structure) AppendStructureFolder();
    return true;
  }

  std::string Path() const { return folder + name; }

 private:
  std::string ReadText(const char* setting) const {
    std::string text;
    RegistryKey::ReadStringUserThenMachine(context.settings.Key(), setting, text);
    return text;
  }

  std::uint32_t ReadNumber(const char* setting) const {
    std::uint32_t value = 0;
    RegistryKey::ReadDwordUserThenMachine(context.settings.Key(), setting, value);
    return value;
  }

  void ReadSettings() {
    name = ReadText(names.fileName);
    folderType = ReadNumber(names.folderType);
    if (folderType == kUserFolder) folder = ReadText(names.folder);
    structure = ReadNumber(names.structure) != 0;
  }

  // Two local parts must never share a file.
  void AppendIdentifierToken() {
    if (platform::UpperCase(name).find("%UNIQUEID%") == std::string::npos) name += " %UNIQUEID%";
  }

  bool FindFolder() {
    if (folderType == kAskFolder) return AskForFolder();
    if (folderType == kAskFile) return AskForFile();
    for (const MarkerRow& row : kMarkers) {
      if (row.folderType == folderType) folder = row.marker;
    }
    if (folderType == kWorkspaceFolder) AppendWorkspaceSubFolder();
    return true;
  }

  void AppendWorkspaceSubFolder() {
    std::string subFolder = ReadText(names.workspaceSubFolder);
    if (subFolder.empty()) return;
    EnsureTrailingBackslash(subFolder);
    folder += subFolder;
  }

  bool AskForFolder() {
    structure = false;
    const std::string last = LastQuestionPath();
    const auto chosen =
        platform::AskFolder(MainWindow(context.driver), last,
                            ReplaceAll(context.texts.GetText(kTextAskFolder), "%s", name));
    if (!chosen) return false;
    folder = *chosen;
    StoreQuestionPath();
    return true;
  }

  bool AskForFile() {
    structure = false;
    const std::string last = LastQuestionPath();
    std::string description;
    request.protocol.GetViewDescription(description);
    const std::string title = request.caption + " (" + description + ")";
    const std::string filter =
        request.typeName + " (*." + request.extension + ")|*." + request.extension + "|";
    const bool chosen = context.driver.ShowFileDialog ? AskThroughDriver(filter, title)
                                                      : AskThroughSystem(last, filter, title);
    if (chosen) StoreQuestionPath();
    return chosen;
  }

  bool AskThroughDriver(const std::string& filter, const std::string& title) {
    char buffer[kDialogBuffer] = {};
    if (context.driver.ShowFileDialog(0, name.c_str(), 0, filter.c_str(), title.c_str(), buffer,
                                      kDialogBuffer) == 0) {
      return false;
    }
    const std::string path(buffer, ::strnlen(buffer, kDialogBuffer - 1));
    const auto backslash = path.rfind('\\');
    const bool hasFolder = backslash != std::string::npos;
    name = hasFolder ? path.substr(backslash + 1) : path;
    folder = hasFolder ? path.substr(0, backslash) : std::string();
    return true;
  }

  bool AskThroughSystem(std::string start, const std::string& filter, const std::string& title) {
    EnsureTrailingBackslash(start);
    platform::SaveQuestion question;
    question.initialPath = start + name;
    question.defaultExtension = request.extension;
    question.filter = filter;
    question.title = title.substr(0, kDialogBuffer - 1);
    const auto chosen = platform::AskSaveFile(question);
    if (!chosen) return false;
    const auto backslash = chosen->rfind('\\');
    const std::size_t nameStart = backslash == std::string::npos ? 0 : backslash + 1;
    name = chosen->substr(nameStart);
    folder = chosen->substr(0, nameStart);
    return true;
  }

  std::string LastQuestionPath() const {
    return context.options.ReadOptionText(kGeneralSection, kLastQuestionPath, kFirstQuestionPath);
  }

  void StoreQuestionPath() const {
    context.options.WriteOptionText(kGeneralSection, kLastQuestionPath, folder);
  }

  void AppendStructureFolder() {
    std::string reference;
    request.protocol.GetGlobalData(global::kRefKey, reference);
    folder += reference;
    EnsureTrailingBackslash(folder);
  }

  const FileNameContext& context;
  const FileNameRequest& request;
  const SettingNames& names;
  std::string name;  // the template at first
  std::uint32_t folderType = kNoFolderRule;
  std::string folder;
  bool structure = false;
};

// Shared parts that make no copy use the library's own file.
bool UsesLibraryFile(const FileNameRequest& request) {
  if (request.local) return false;
  std::string copyFile;
  request.protocol.GetGlobalData(global::kGenCopyFile, copyFile);
  return copyFile == "0";
}

}  // namespace

bool MakeFileName(const FileNameContext& context, const FileNameRequest& request,
                  std::string& filePath) {
  if (request.sessionWithoutNames) return true;
  if (request.local && request.change && !request.modelChanged) return true;
  if (UsesLibraryFile(request)) {
    request.modelFilePath(filePath);
    return true;
  }
  FileNameMaker maker(context, request);
  if (!maker.Make()) return false;
  filePath = maker.Path();
  return true;
}

}  // namespace quillmar
