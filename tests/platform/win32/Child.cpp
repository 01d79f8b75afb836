#include "Child.h"

#include <windows.h>

#include <cstdio>
#include <sstream>
#include <string>

namespace {

// Never destroyed: the library reports after the program's own end.
std::string& logFile = *new std::string;
std::string& verdict = *new std::string;

void Wait(DWORD milliseconds) {
  MSG message;
  PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // now the program waits for input
  MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
}

}  // namespace

extern "C" __declspec(dllexport) char ChildEvent(char event) {
  if (std::FILE* log = std::fopen(logFile.c_str(), "ab")) {
    std::fputc(event, log);
    std::fclose(log);
  }
  return verdict[0];
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  std::istringstream words{std::string(GetCommandLineA())};
  std::string word;
  words >> word;
  if (word == "wait") {
    DWORD milliseconds = 0;
    words >> milliseconds;
    Wait(milliseconds);
  } else if (word == "load") {
    std::string library;
    std::string end;
    words >> library >> logFile >> verdict >> end;
    const HMODULE module = LoadLibraryA(library.c_str());
    if (module == nullptr) ChildEvent('F');
    if (module != nullptr && end == "free") FreeLibrary(module);
  }
  return 0;
}
