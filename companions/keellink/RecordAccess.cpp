#include "keellink/RecordAccess.h"

#include <cstdio>

#include "keelcomm/ModulePath.h"
#include "keellink/Border.h"
#include "platform/Modules.h"
#include "platform/System.h"
#include "quillmar/Storage.h"

namespace quillmar::keellink {
namespace {

// A reference of our own: the storage library must not go away under the functions bound from it.
platform::Library TakeStorage() {
  const QmModule loaded = platform::FindLoadedModule(QM_STORAGE_LIBRARY);
  const std::string path = loaded != nullptr ? platform::ModulePath(loaded)
                                             : companion::ThisModuleFolder() + QM_STORAGE_LIBRARY;
  return std::move(platform::LoadLibraryAt(path).library);
}

bool Bind(QmModule storage, RecordAccess& access) {
  bool isWhole = true;
#define QM_BIND(name, result, parameters, names)                                                 \
  access.name = reinterpret_cast<decltype(access.name)>(platform::FindFunction(storage, #name)); \
  isWhole = isWhole && access.name != nullptr;
  KEELCOMM_RECORD_FUNCTIONS(QM_BIND)
#undef QM_BIND
  return isWhole;
}

void ReportMissingStorage() {
  constexpr char why[] = "no Keelcomm.dll of this suite is loaded";
  std::fprintf(stderr, "Keellink: %s\n", why);
  platform::DebugOutput(std::string("Keellink: ") + why);
  kBorder.Note(why);
}

}  // namespace

const RecordAccess* FindRecordAccess() {
  static platform::Library storage;
  static RecordAccess access;
  if (storage) return &access;
  storage = TakeStorage();
  if (storage && Bind(storage.Get(), access)) return &access;
  storage.Free();
  ReportMissingStorage();
  return nullptr;
}

}  // namespace quillmar::keellink
