// Reference texts as the CAD hands them in, in both spellings.
#include <vector>

#include "Fuzzing.h"
#include "protocol/VXProtocol.h"

namespace {

using namespace quillmar;

std::vector<std::string> stored;
short existence = 0;

short QM_STDCALL PutBuffer(const char*, QmStringList* list) {
  stored.clear();
  for (const std::string_view text : TextsOf(list)) stored.emplace_back(text);
  return 1;
}

short QM_STDCALL Exists(const char*) { return existence; }

struct Spelling {
  Markers markers;
  std::string_view identifier;
  std::string_view element;
};
constexpr Spelling kSpellings[] = {{Markers::Standard, "<@PID>", "<@EL>"},
                                   {Markers::Alternate, "<@GMHPID>", "<@GMHEL>"}};

const bench::ModuleWorld& World() {
  static const bench::ModuleWorld world = [] {
    StorageTable storage = bench::InstantStorage({});
    storage.Com_PutBuffer.pointer = &PutBuffer;
    storage.Com_IsProtocolExists.pointer = &Exists;
    return bench::ModuleWorld(storage, bench::InstantLinks(), bench::InstantDriver());
  }();
  return world;
}

// What is stored, written as a reference again, is the text up to its last complete item.
void CheckStored(const std::string& reference, const Spelling& spelling) {
  std::string items;
  for (const std::string& text : stored) items.append(text).append(spelling.element);
  const auto begin = reference.find(spelling.identifier);
  fuzz::Require(begin != std::string::npos, "a text without identifier was taken");
  const std::string given = reference.substr(begin + spelling.identifier.size());
  const auto last = given.rfind(spelling.element);
  const std::string whole =
      last == std::string::npos ? std::string() : given.substr(0, last + spelling.element.size());
  // A text ends at its first NUL for the store; what is behind it cannot be compared.
  if (whole.find('\0') == std::string::npos) fuzz::Require(items == whole, "an item was lost");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  existence = static_cast<short>(data[0] % 4);
  const std::string reference(fuzz::Input(data + 1, size - 1));
  for (const Spelling& spelling : kSpellings) {
    VXProtocol protocol(World().Protocols());
    stored.clear();
    protocol.OpenFromReference(reference, data[0] >= 128, spelling.markers);
    protocol.CreateNew();
    if (protocol.PutBufferFromReference(reference, spelling.markers)) {
      CheckStored(reference, spelling);
    }
  }
  return 0;
}
