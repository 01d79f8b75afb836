// The list of all parts as the CAD hands it over, which may need a second, larger buffer.
#include <cstring>

#include "Fuzzing.h"
#include "commands/CadQuestions.h"

namespace {

std::string list;

int QM_CDECL GetAllParts(char* text, int* size) {
  const int offered = *size;
  *size = static_cast<int>(list.size());
  if (*size > offered) return 0;
  std::strcpy(text, list.c_str());
  return 1;
}

}  // namespace

// The first byte says how often the rest is repeated, so that small inputs outgrow the buffer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmar;
  if (size == 0) return 0;
  // A list ends at its first NUL.
  const std::string piece = std::string(fuzz::Input(data + 1, size - 1)).c_str();
  list.clear();
  for (int i = data[0] % 8 == 7 ? 1000 : 1; i > 0; --i) list += piece;

  CadDriverTable driver = bench::InstantDriver();
  driver.GetAllParts.pointer = &GetAllParts;
  const auto references = SplitAllParts(driver);
  fuzz::Require(references.has_value(), "the list is taken whole");
  constexpr std::string_view kSeparator = "<@NEXT_PROT>";
  std::string joined;
  for (const std::string& reference : *references) {
    fuzz::Require(!reference.empty(), "no reference is empty");
    joined.append(joined.empty() ? "" : kSeparator).append(reference);
  }
  if (joined != list) joined.append(kSeparator);
  fuzz::Require(joined == list, "the references make up the list");
  return 0;
}
