#include "platform/Forms.h"

#include <deque>

#include "platform/win32/FormControls.h"
#include "platform/win32/TemplateDialog.h"

// Property sheets; after the system's header.
#include <commctrl.h>
#include <prsht.h>

namespace quillmar::platform {
namespace {

// --- pages of a sheet ---

// What a page's window procedure finds again through the window's user data.
struct OpenPage {
  const DialogSurroundings& surroundings;
  const Sheet& sheet;
  std::variant<Form, QmOptionsPage>& page;
  HWND window = nullptr;
};

void ShowHelp(const OpenPage& open) {
  if (auto* foreign = std::get_if<QmOptionsPage>(&open.page)) {
    foreign->onEvent(foreign->context, QM_PAGE_HELP, win32::ToWindow(open.window));
  } else {
    WinHelpA(GetParent(open.window), open.sheet.helpFile.c_str(), HELP_CONTEXT,
             open.sheet.helpContext);
  }
}

// A page that the user leaves must be content, so that all of them are when he confirms.
bool IsContent(const OpenPage& open) {
  if (auto* foreign = std::get_if<QmOptionsPage>(&open.page)) {
    return foreign->onEvent(foreign->context, QM_PAGE_VALIDATE, win32::ToWindow(open.window)) != 0;
  }
  Form& form = std::get<Form>(open.page);
  win32::ReadControls(open.window, form);
  return !form.accept || form.accept(form);
}

INT_PTR OnPageNotification(OpenPage& open, const NMHDR& notification) {
  if (notification.code == PSN_HELP) {
    ShowHelp(open);
  } else if (notification.code == PSN_KILLACTIVE) {
    SetWindowLongPtrA(open.window, DWLP_MSGRESULT, IsContent(open) ? FALSE : TRUE);
  } else if (notification.code == LVN_ITEMCHANGED) {
    if (auto* form = std::get_if<Form>(&open.page)) {
      win32::OnListSelection(open.window, *form, static_cast<int>(notification.idFrom));
    }
    return FALSE;
  } else {
    return FALSE;
  }
  return TRUE;
}

void OpenWindow(HWND window, OpenPage& open) {
  open.window = window;
  SetWindowLongPtrA(window, DWLP_USER, reinterpret_cast<LONG_PTR>(&open));
  if (auto* form = std::get_if<Form>(&open.page)) {
    if (open.surroundings.translate) open.surroundings.translate(win32::ToWindow(window));
    win32::FillControls(window, *form);
  } else {
    auto& foreign = std::get<QmOptionsPage>(open.page);
    foreign.onEvent(foreign.context, QM_PAGE_OPEN, win32::ToWindow(window));
  }
}

INT_PTR OnPageMessage(OpenPage& open, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* foreign = std::get_if<QmOptionsPage>(&open.page);
  if (message == WM_NOTIFY) {
    const auto& notification = *reinterpret_cast<const NMHDR*>(lParam);
    if (OnPageNotification(open, notification) != FALSE) return TRUE;
  }
  if (foreign != nullptr) {
    return foreign->onMessage != nullptr
               ? foreign->onMessage(foreign->context, win32::ToWindow(open.window), message, wParam,
                                    lParam)
               : FALSE;
  }
  if (message != WM_COMMAND) return FALSE;
  win32::OnControl(open.window, std::get<Form>(open.page), LOWORD(wParam), HIWORD(wParam));
  return TRUE;
}

INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  try {
    if (message == WM_INITDIALOG) {
      const auto* page = reinterpret_cast<const PROPSHEETPAGEA*>(lParam);
      OpenWindow(window, *reinterpret_cast<OpenPage*>(page->lParam));
      return TRUE;
    }
    auto* open = reinterpret_cast<OpenPage*>(GetWindowLongPtrA(window, DWLP_USER));
    return open != nullptr ? OnPageMessage(*open, message, wParam, lParam) : FALSE;
  } catch (...) {
    OutputDebugStringA("A page's work ended with an exception\n");
    return FALSE;
  }
}

PROPSHEETPAGEA Describe(OpenPage& open) {
  PROPSHEETPAGEA page{};
  page.dwSize = sizeof page;
  page.pfnDlgProc = PageProcedure;
  page.lParam = reinterpret_cast<LPARAM>(&open);
  auto* foreign = std::get_if<QmOptionsPage>(&open.page);
  const Form* form = std::get_if<Form>(&open.page);
  page.hInstance =
      static_cast<HINSTANCE>(foreign != nullptr ? foreign->resources : open.surroundings.resources);
  page.pszTemplate =
      MAKEINTRESOURCEA(foreign != nullptr ? foreign->dialogTemplate : form->dialogTemplate);
  page.pszTitle = foreign != nullptr ? foreign->title : form->title.c_str();
  if (page.pszTitle != nullptr && page.pszTitle[0] != '\0') page.dwFlags |= PSP_USETITLE;
  if (foreign != nullptr || !open.sheet.helpFile.empty()) page.dwFlags |= PSP_HASHELP;
  return page;
}

void TellAboutEnd(std::deque<OpenPage>& pages, QmPageEvent event) {
  for (OpenPage& open : pages) {
    if (auto* foreign = std::get_if<QmOptionsPage>(&open.page)) {
      foreign->onEvent(foreign->context, event, 0);
    }
  }
}

}  // namespace

bool ShowForm(const DialogSurroundings& surroundings, Form& form) {
  Form edited = form;
  const win32::DialogBehaviour behaviour{
      .open =
          [&edited](HWND dialog) {
            if (!edited.title.empty()) SetWindowTextA(dialog, edited.title.c_str());
            win32::FillControls(dialog, edited);
          },
      .accept =
          [&edited](HWND dialog) {
            win32::ReadControls(dialog, edited);
            return !edited.accept || edited.accept(edited);
          },
      .command = [&edited](HWND dialog, int control,
                           int code) { win32::OnControl(dialog, edited, control, code); }};
  if (!win32::ShowTemplateDialog(surroundings.resources, edited.dialogTemplate, surroundings.owner,
                                 surroundings.translate, behaviour)) {
    return false;
  }
  form = std::move(edited);
  return true;
}

bool ShowSheet(const DialogSurroundings& surroundings, Sheet& sheet) {
  if (sheet.pages.empty()) return false;
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
  InitCommonControlsEx(&classes);
  Sheet edited = sheet;
  std::deque<OpenPage> pages;
  std::vector<PROPSHEETPAGEA> descriptions;
  for (auto& page : edited.pages) {
    pages.push_back({surroundings, edited, page});
    descriptions.push_back(Describe(pages.back()));
  }
  PROPSHEETHEADERA header{};
  header.dwSize = sizeof header;
  header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
  if (!edited.helpFile.empty()) header.dwFlags |= PSH_HASHELP;
  header.hwndParent = win32::ToOwner(surroundings.owner);
  header.hInstance = static_cast<HINSTANCE>(surroundings.resources);
  header.pszCaption = edited.title.c_str();
  header.nPages = static_cast<UINT>(descriptions.size());
  header.ppsp = descriptions.data();
  const bool confirmed = PropertySheetA(&header) > 0;
  TellAboutEnd(pages, confirmed ? QM_PAGE_ACCEPT : QM_PAGE_CANCEL);
  if (confirmed) sheet = std::move(edited);
  return confirmed;
}

bool ReadForeignMemory(const void* from, void* to, std::size_t size) {
  SIZE_T read = 0;
  return ReadProcessMemory(GetCurrentProcess(), from, to, size, &read) != FALSE && read == size;
}

}  // namespace quillmar::platform
