#include "session/Addin.h"

#include <fmt/format.h>

#include <vector>

#include "drawboard/CodePage.h"

namespace session {
namespace {

namespace platform = quillmar::platform;

platform::Library Load(const std::string& path) {
  auto loaded = platform::LoadLibraryAt(path);
  if (!loaded.library) {
    throw SessionError(fmt::format("{} cannot be loaded (error {})", path, loaded.error));
  }
  return std::move(loaded.library);
}

template <typename Function>
void Bind(const platform::Library& library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(platform::FindFunction(library.Get(), name));
  if (function == nullptr) {
    throw SessionError(
        fmt::format("{} lacks the function {}", platform::ModulePath(library.Get()), name));
  }
}

// The text of a list reader of the add-in, asked twice when the first buffer is too small.
std::string ReadList(int(QM_CDECL* reader)(char*, int*)) {
  std::vector<char> buffer(65536);
  int size = static_cast<int>(buffer.size()) - 1;
  if (reader(buffer.data(), &size) == 0) {
    if (size <= 0) throw SessionError("The CAD does not answer what stands in its document");
    buffer.resize(static_cast<std::size_t>(size) + 1);
    if (reader(buffer.data(), &size) == 0) {
      throw SessionError("The CAD does not answer what stands in its document");
    }
  }
  return std::string(buffer.data(), static_cast<std::size_t>(size));
}

}  // namespace

Cad::Cad(const std::string& path) : library(Load(path)) {
#define SESSION_BIND(name, result, parameters, arguments) Bind(library, #name, call.name);
  DRAWBOARD_FUNCTIONS(SESSION_BIND)
#undef SESSION_BIND
#define SESSION_BIND(need, name, result, parameters, arguments) Bind(library, #name, sheet.name);
  QM_CAD_2D_FUNCTIONS(SESSION_BIND)
#undef SESSION_BIND
}

bool Cad::HasMessages() {
  int size = 0;
  call.Drawboard_GetMessages(nullptr, &size);
  return size > 0;
}

std::string Cad::TakeMessages() {
  const std::string messages = ReadList(call.Drawboard_GetMessages);
  call.Drawboard_ClearMessages();
  return drawboard::ToUtf8(messages);
}

std::string Cad::DocumentText() { return ReadList(call.Drawboard_GetDocument); }

Module::Module(const std::string& path) : library(Load(path)) {
#define SESSION_BIND(name, convention, result, parameters, arguments) \
  Bind(library, #name, call.name);
  QM_EXPORTS(SESSION_BIND)
#undef SESSION_BIND
}

}  // namespace session
