#include "platform/WindowTexts.h"

#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

constexpr int kMenuTextSize = 1024;

void ReplaceOwnText(HWND window, const TextReplacement& replacement) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  if (const auto instead = replacement(text)) SetWindowTextA(window, instead->c_str());
}

}  // namespace

void ReplaceWindowTexts(QmWindow window, const TextReplacement& replacement) {
  const HWND handle = win32::ToHandle(window);
  if (IsWindow(handle) == 0) return;
  ReplaceOwnText(handle, replacement);
  for (HWND child = GetWindow(handle, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    ReplaceOwnText(child, replacement);
  }
}

MenuHandle MenuOf(QmWindow window) {
  const HWND handle = win32::ToHandle(window);
  return IsWindow(handle) != 0 ? GetMenu(handle) : nullptr;
}

bool ReplaceMenuTexts(MenuHandle menu, const TextReplacement& replacement) {
  auto* const handle = static_cast<HMENU>(menu);
  if (handle == nullptr) return false;
  const int count = GetMenuItemCount(handle);
  for (int position = 0; position < count; ++position) {
    const auto item = static_cast<UINT>(position);
    char text[kMenuTextSize] = "";
    GetMenuStringA(handle, item, text, kMenuTextSize, MF_BYPOSITION);
    if (auto instead = replacement(text)) {
      MENUITEMINFOA info{};
      info.cbSize = sizeof info;
      info.fMask = MIIM_STRING;
      info.dwTypeData = instead->data();
      SetMenuItemInfoA(handle, item, TRUE, &info);
    }
    if (HMENU submenu = GetSubMenu(handle, position)) ReplaceMenuTexts(submenu, replacement);
  }
  return true;
}

}  // namespace quillmar::platform
