#include "parts/SelectedPart.h"

#include "parts/TwoStepRead.h"

namespace quillmar {
namespace {

constexpr int kReferenceSize = 65536;  // the buffer holds a NUL more
constexpr std::size_t kNameSize = 1024;

}  // namespace

std::optional<SelectedPart> AskSelectedPart(const CadDriverTable& driver) {
  char name[kNameSize] = "";
  int size = kReferenceSize;
  std::string unused;
  const bool answered = ReadOnce(
      [&](char* text, int* room) { return driver.GetPart(name, text, room); }, size, unused);
  // A text beyond the buffer counts as answered: its length is what was asked for.
  if (!answered && size <= kReferenceSize) return std::nullopt;
  name[kNameSize - 1] = '\0';
  return SelectedPart{name, size};
}

}  // namespace quillmar
