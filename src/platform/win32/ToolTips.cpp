#include "platform/win32/ToolTips.h"

#include <commctrl.h>

#include <iterator>

namespace quillmar::platform::win32 {
namespace {

// The tool is named by its identifier or by its window.
template <class Request>
UINT ControlIdentifier(const Request& request) {
  if ((request.uFlags & TTF_IDISHWND) == 0) return static_cast<UINT>(request.hdr.idFrom);
  return static_cast<UINT>(GetDlgCtrlID(reinterpret_cast<HWND>(request.hdr.idFrom)));
}

template <class Request, class Load>
bool Answer(HMODULE resources, NMHDR* notification, Load load) {
  auto& request = *reinterpret_cast<Request*>(notification);
  const UINT identifier = ControlIdentifier(request);
  const int size = static_cast<int>(std::size(request.szText));
  if (identifier == 0 || load(resources, identifier, request.szText, size) == 0) return false;
  request.lpszText = request.szText;
  return true;
}

}  // namespace

void AddToolTips(HWND dialog) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  // Owned by the dialog, and so destroyed with it.
  const HWND tips =
      CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                      WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, nullptr, nullptr);
  for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
       control = GetWindow(control, GW_HWNDNEXT)) {
    TTTOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = dialog;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKA;
    SendMessageA(tips, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

bool AnswerToolTipRequest(HMODULE resources, NMHDR* notification) {
  if (notification->code == TTN_GETDISPINFOA) {
    return Answer<NMTTDISPINFOA>(resources, notification, LoadStringA);
  }
  if (notification->code == TTN_GETDISPINFOW) {
    return Answer<NMTTDISPINFOW>(resources, notification, LoadStringW);
  }
  return false;
}

}  // namespace quillmar::platform::win32
