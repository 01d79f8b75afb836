// An add-in with the faults that authors make: functions that are missing, buffers overrun, texts
// without their NUL, a crash, a hang, an exception that leaves.
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

#include "quillmar/CadDriver.h"

#define DECLARE(need, name, result, parameters, arguments) \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters;
QM_CAD_FUNCTIONS(DECLARE)
#undef DECLARE

namespace {
std::string stored;
}

int InsertParamPart(const char*, const char*, const char*, const char* connection, int, const char*,
                    const char*, const ExtDataPair*, int) {
  stored = connection;  // a null pointer is not looked for
  return 1;
}

int ConnectProtocol(const char*, const char*) { return 1; }

// Knows nothing of the buffer's size.
int GetProtocol(const char*, char* text, int* size) {
  *size = static_cast<int>(stored.size());
  std::strcpy(text, stored.c_str());
  return 1;
}

// Neither does this one, nor of the NUL.
int GetPart(char* partName, char* text, int* size) {
  partName[0] = '\0';
  *size = 4000;
  std::memset(text, 'x', 4000);
  return 1;
}

// Knows how long texts usually are.
int GetAssembly(char*, char* second, char*, int* size) {
  std::memset(second, 'x', 300);
  *size = 0;
  return 0;
}

int GetDataWD(char* text, int* size, char*) {
  if (*size < 1000) text[*size + 1] = '\0';
  *size = 0;
  return 0;
}

// Asks for too little.
int GetParameterList(const char*, char* text, int* size) {
  const bool fits = *size >= 10;
  *size = fits ? 10 : 9;
  if (fits) std::strcpy(text, "d,20,L,50,");
  return fits ? 1 : 0;
}

// Hangs, with the buffer that the module has for it.
int GetAllParts(char*, int* size) {
  while (*size == 65535) std::this_thread::sleep_for(std::chrono::seconds(1));
  return 0;
}

int RenamePart(const char*, const char*, const char*) { throw std::runtime_error("no part"); }
