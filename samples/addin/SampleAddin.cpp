// The smallest CAD add-in that works with Quillmar: a "document" in memory and the 19 functions
// that LoginCad asks for. A real add-in does the same with the objects of its CAD.
#include <quillmar/CadDriver.h>
#include <quillmar/Exports.h>

#include <cstring>
#include <map>
#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// Declares all driver functions as they must be: a definition below that differs does not compile.
#define DECLARE(need, name, result, parameters, arguments) \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters;
QM_CAD_FUNCTIONS(DECLARE)
#undef DECLARE

namespace {

// What an add-in keeps with every CAD object that comes from a calculation.
struct Part {
  std::string name;        // in the CAD's tree
  std::string connection;  // the protocol's reference text: give it back as it came
  std::string parameters;
  std::string filePath;
};

std::map<std::string, Part> document;  // by protocol identifier
std::string selectedId;                // what the user has selected
std::string Text(const char* text) { return text != nullptr ? text : ""; }

// Objects are asked for by protocol identifier or by their name in the CAD.
Part* Find(const char* key) {
  const auto found = document.find(Text(key));
  if (found != document.end()) return &found->second;
  for (auto& entry : document) {
    if (entry.second.name == Text(key)) return &entry.second;
  }
  return nullptr;
}

// The rule of every list buffer: *size comes in as the capacity without the NUL and goes out as the
// length. A text that does not fit gives 0, and the caller asks again with that much room.
int Give(const std::string& value, char* text, int* size) {
  if (size == nullptr) return 0;
  const bool fits = text != nullptr && *size >= static_cast<int>(value.size());
  *size = static_cast<int>(value.size());
  if (!fits) return 0;
  std::memcpy(text, value.c_str(), value.size() + 1);
  return 1;
}

int Nothing(int* size) {
  if (size != nullptr) *size = 0;  // plain failure: asking again would not help
  return 0;
}

int Insert(const char* id, const char* parameters, const char* connection, const char* filePath,
           const char* caption) {
  if (Text(id).empty()) return 0;
  const std::string name = Text(caption).empty() ? Text(id) : Text(caption);
  document[id] = {name, Text(connection), Text(parameters), Text(filePath)};
  return 1;
}

// At a change the object keeps its name and its file.
int Change(const char* id, const char* parameters, const char* connection) {
  const auto found = document.find(Text(id));
  if (found == document.end()) return 0;
  found->second.connection = Text(connection);
  found->second.parameters = Text(parameters);
  return 1;
}

}  // namespace

// --- the CAD's window and its document ---
int GetMainHwnd(QmWindow* window) {
  if (window == nullptr) return 0;
  *window = 0;  // here: the handle of the CAD's main window
  return 1;
}

int GetPart(char* partName, char* text, int* size) {
  const Part* part = Find(selectedId.c_str());
  if (part == nullptr) return Nothing(size);
  const std::string name = part->name.substr(0, 1023);  // the buffer has 1024 characters
  if (partName != nullptr) std::memcpy(partName, name.c_str(), name.size() + 1);
  return Give(part->connection, text, size);
}

int GetProtocol(const char* partName, char* text, int* size) {
  const Part* part = Find(partName);
  return part != nullptr ? Give(part->connection, text, size) : Nothing(size);
}

int GetParameterList(const char* key, char* text, int* size) {
  const Part* part = Find(key);
  return part != nullptr ? Give(part->parameters, text, size) : Nothing(size);
}

int GetAllParts(char* text, int* size) {
  std::string all;
  for (const auto& entry : document) all += entry.second.connection + "<@NEXT_PROT>";
  return Give(all, text, size);
}

int ConnectProtocol(const char* id, const char* connection) {
  Part* part = Find(id);
  if (part == nullptr) return 0;
  part->connection = Text(connection);
  return 1;
}

int RenamePart(const char* id, const char*, const char* newName) {
  Part* part = Find(id);
  if (part == nullptr) return 0;
  part->name = Text(newName);
  return 1;
}

// --- parts: here the CAD would build the model file and place it ---
int InsertParamPart(const char* id, const char*, const char* parameters, const char* connection,
                    int, const char* filePath, const char* caption, const ExtDataPair*, int) {
  return Insert(id, parameters, connection, filePath, caption);
}
int ChangeParamPart(const char* id, const char*, const char* parameters, const char* connection,
                    int, const char*, const char*, const ExtDataPair*, int, int) {
  return Change(id, parameters, connection);
}
int InsertShaft(const char* id, const char*, const char* parameters, const char* connection,
                const char* filePath, const char* caption, const ExtDataPair*, int) {
  return Insert(id, parameters, connection, filePath, caption);
}
int ChangeShaft(const char* id, const char*, const char* parameters, const char* connection,
                const char*, const ExtDataPair*, int) {
  return Change(id, parameters, connection);
}
int InsertPart(const char* file, const char* id, const char* connection, int, const char*,
               const char* caption, const ExtDataPair*, int) {
  return Insert(id, "", connection, file, caption);
}
int ChangePart(const char*, const char* id, const char* connection, int, const char*, const char*,
               const ExtDataPair*, int) {
  return Change(id, "", connection);
}
int InsertCalculation(const char* id, const char* connection, const char* caption) {
  return Insert(id, "", connection, "", caption);
}
int ChangeCalculation(const char* id, const char* connection, const char*) {
  return Change(id, "", connection);
}

// --- what this CAD does not have; 0 makes the module give the operation up ---
int GetAssembly(char*, char*, char*, int* size) { return Nothing(size); }
int InsertAssembly(const char*, const char*, const char*) { return 0; }
int ChangeAssembly(const char*, const char*, const char*) { return 0; }
int ExportModelFile(const char*, const char*, char*, int) { return 0; }

// --- the CAD's commands ---
namespace {
void* module = nullptr;

void* FindExport(const char* name) {
#if defined(_WIN32)
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
#else
  return dlsym(module, name);
#endif
}

// An export of Quillmar.dll by its name, with the type that the header gives it.
#define QUILLMAR(name) reinterpret_cast<decltype(&name)>(FindExport(#name))

}  // namespace

// At the start of the CAD: loads the module by its full path and logs in. The add-in names its own
// file, in which the module then finds the functions above.
QM_EXTERN_C QM_EXPORT int ConnectToQuillmar(const char* path) {
#if defined(_WIN32)
  module = LoadLibraryA(path);
#else
  module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
#endif
  int status = 0;
  return module != nullptr && QUILLMAR(LoginCad)("SampleAddin.dll", 0x10, 1, "Drawboard", "dbp",
                                                 "dbf", "Sample", &status) == 1;
}

// A menu command. The part comes later, through the insert functions, when the user has calculated.
QM_EXTERN_C QM_EXPORT void StartSpurGear(void) { QUILLMAR(StartCalculation)("GEAR1", "ISO"); }

// At the end of the CAD.
QM_EXTERN_C QM_EXPORT void DisconnectFromQuillmar(void) { QUILLMAR(LogoutCad)(); }
