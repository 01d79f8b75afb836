#include "tessio/Peers.h"

#include <windows.h>

#include <cstring>
#include <vector>

#include "platform/System.h"
#include "tessio/Parameters.h"

namespace quillmar::tessio {
namespace {

// A message-only window of this class stands for each logged-in process; its title is the program.
constexpr char kWindowClass[] = "VantorelTessioPeer";
constexpr UINT kAnswerTime = 2000;  // milliseconds

// What travels in WM_COPYDATA; its number is the message's own.
struct Letter {
  int value;
  int isModal;
  char text[kLongestText + 1];
};

LRESULT Receive(const COPYDATASTRUCT& data) {
  Letter letter;
  if (data.cbData != sizeof letter) return 0;
  std::memcpy(&letter, data.lpData, sizeof letter);
  letter.text[kLongestText] = '\0';
  const Notification notification{static_cast<int>(data.dwData), letter.value, letter.text};
  RefreshParameters(notification);
  if (letter.isModal != 0) {
    Notifications::Instance().Deliver(notification);
  } else {
    Notifications::Instance().DeliverLater(notification);
  }
  return 1;
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != WM_COPYDATA) return DefWindowProcA(window, message, first, second);
  try {
    return Receive(*reinterpret_cast<const COPYDATASTRUCT*>(second));
  } catch (...) {
    return 0;
  }
}

HINSTANCE ThisLibrary() {
  HMODULE module = nullptr;
  constexpr DWORD flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  GetModuleHandleExA(flags, reinterpret_cast<LPCSTR>(&ThisLibrary), &module);
  return module;
}

class PeerWindow {
 public:
  PeerWindow() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &WindowProcedure;
    windowClass.hInstance = ThisLibrary();
    windowClass.lpszClassName = kWindowClass;
    RegisterClassA(&windowClass);
    window = CreateWindowExA(0, kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             windowClass.hInstance, nullptr);
  }
  ~PeerWindow() {
    if (window != nullptr) DestroyWindow(window);
    UnregisterClassA(kWindowClass, ThisLibrary());
  }
  PeerWindow(const PeerWindow&) = delete;
  PeerWindow& operator=(const PeerWindow&) = delete;

  void SetProgram(const std::string& program) { SetWindowTextA(window, program.c_str()); }

 private:
  HWND window;
};

std::vector<HWND> PeersOfOthers() {
  std::vector<HWND> peers;
  HWND window = nullptr;
  while ((window = FindWindowExA(HWND_MESSAGE, window, kWindowClass, nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) peers.push_back(window);
  }
  return peers;
}

}  // namespace

void JoinPeers(const std::string& program) {
  static PeerWindow window;
  window.SetProgram(program);
}

void SendToPeers(const Notification& notification, bool isModal) {
  Letter letter{notification.value, isModal ? 1 : 0, {}};
  notification.text.copy(letter.text, kLongestText);
  COPYDATASTRUCT data{static_cast<ULONG_PTR>(notification.number), sizeof letter, &letter};
  for (const HWND peer : PeersOfOthers()) {
    SendMessageTimeoutA(peer, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                        kAnswerTime, nullptr);
  }
}

bool IsPeerRunning(const std::string& program) {
  for (const HWND peer : PeersOfOthers()) {
    // Of another process's window the system itself knows the title, whatever that process does.
    char title[MAX_PATH] = "";
    GetWindowTextA(peer, title, sizeof title);
    if (platform::EqualsNoCase(title, program)) return true;
  }
  return false;
}

}  // namespace quillmar::tessio
