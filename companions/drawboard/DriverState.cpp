// The add-in's state, its life from load to unload, and the answers that its functions give.
#include <cstring>
#include <memory>

#include "drawboard/BoardError.h"
#include "drawboard/Driver.h"
#include "drawboard/Folders.h"
#include "platform/Modules.h"

namespace drawboard {
namespace {

QmModule library = nullptr;
std::unique_ptr<Addin> addin;

}  // namespace

Addin::Addin(QmModule self, const std::string& folder)
    : board(folder, MakeKernel(folder)), window(self) {}

Addin& TheAddin() {
  if (!addin) {
    const std::string folder = FolderOf(quillmar::platform::ModulePath(library));
    addin = std::make_unique<Addin>(library, folder);
  }
  return *addin;
}

void AddinAttached(QmModule self) { library = self; }

void AddinDetached(bool processEnding) {
  if (!addin) return;
  if (processEnding) addin->window.Abandon();
  addin.reset();
}

ListBuffer::ListBuffer(char* buffer, int* size) : buffer(buffer), size(size) {
  if (size == nullptr) throw BoardError("The caller gave no size of its buffer");
  capacity = *size;
  *size = 0;
}

int ListBuffer::Give(std::string_view text) {
  *size = static_cast<int>(text.size());
  if (buffer == nullptr || capacity < *size) return 0;
  std::memcpy(buffer, text.data(), text.size());
  buffer[text.size()] = '\0';
  return 1;
}

void GiveText(std::string_view text, char* buffer, std::size_t capacity) {
  if (buffer == nullptr || capacity == 0) throw BoardError("The caller gave no buffer");
  buffer[0] = '\0';
  if (text.size() >= capacity) {
    throw BoardError("A text of " + std::to_string(text.size()) +
                     " characters does not fit into the caller's buffer");
  }
  std::memcpy(buffer, text.data(), text.size());
  buffer[text.size()] = '\0';
}

}  // namespace drawboard
