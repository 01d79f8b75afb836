// A program that becomes idle, waits as many milliseconds as its command line says, and ends.
#include <windows.h>

#include <cstdlib>

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  const auto milliseconds = static_cast<DWORD>(std::atoi(GetCommandLineA()));
  MSG message;
  PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // now it waits for input
  MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
  return 0;
}
