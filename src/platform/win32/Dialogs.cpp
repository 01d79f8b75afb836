#include "platform/Dialogs.h"

#include <algorithm>

#include "platform/win32/Win32.h"

#include <commdlg.h>
#include <shlobj.h>

namespace quillmar::platform {
namespace {

constexpr DWORD kFileNameSize = 1024;

// Selects the start folder, a text, when the folder browser has been made.
int CALLBACK OnFolderBrowser(HWND browser, UINT message, LPARAM, LPARAM start) {
  if (message == BFFM_INITIALIZED) SendMessageA(browser, BFFM_SETSELECTIONA, TRUE, start);
  return 0;
}

// The system's form of a filter: parts closed by a NUL, and one NUL more.
std::string SystemFilter(std::string filter) {
  if (!filter.empty() && !filter.ends_with('|')) filter += '|';
  std::replace(filter.begin(), filter.end(), '|', '\0');
  return filter + '\0';
}

}  // namespace

void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) {
  if (icon == MessageIcon::Error) {
    MessageBoxA(nullptr, text.c_str(), title.c_str(),
                MB_OK | MB_ICONERROR | MB_SYSTEMMODAL | MB_TOPMOST | MB_SETFOREGROUND);
  } else {
    MessageBoxA(GetActiveWindow(), text.c_str(), title.c_str(), MB_OK);
  }
}

std::optional<std::string> AskFolder(QmWindow owner, const std::string& start,
                                     const std::string& prompt) {
  BROWSEINFOA question{};
  question.hwndOwner = win32::ToOwner(owner);
  question.lpszTitle = prompt.c_str();
  question.ulFlags = BIF_RETURNONLYFSDIRS;
  question.lpfn = OnFolderBrowser;
  question.lParam = reinterpret_cast<LPARAM>(start.c_str());
  const LPITEMIDLIST chosen = SHBrowseForFolderA(&question);
  if (chosen == nullptr) return std::nullopt;
  char path[MAX_PATH] = "";
  const bool isFolder = SHGetPathFromIDListA(chosen, path) != FALSE;
  CoTaskMemFree(chosen);
  if (!isFolder) return std::nullopt;
  return path;
}

std::optional<std::string> AskSaveFile(const SaveQuestion& question) {
  const std::string filter = SystemFilter(question.filter);
  std::string path = question.initialPath.substr(0, kFileNameSize - 1);
  path.resize(kFileNameSize);
  OPENFILENAMEA dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = win32::ToOwner(question.owner);
  dialog.lpstrFilter = filter.c_str();
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = kFileNameSize;
  dialog.lpstrTitle = question.title.c_str();
  dialog.lpstrDefExt = question.defaultExtension.c_str();
  dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
  if (GetSaveFileNameA(&dialog) == FALSE) return std::nullopt;
  path.resize(path.find('\0'));
  return path;
}

}  // namespace quillmar::platform
