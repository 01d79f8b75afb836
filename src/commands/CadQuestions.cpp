#include "commands/CadQuestions.h"

#include "base/Texts.h"
#include "parts/SelectedPart.h"
#include "parts/TwoStepRead.h"

namespace quillmar {
namespace {

constexpr int kReferenceSize = 65536;  // first try; the buffer holds a NUL more
constexpr int kAllPartsSize = 65535;
constexpr std::size_t kAssemblyTextSize = 1024;
constexpr std::size_t kAssemblyNameSize = 260;
constexpr std::size_t kAssemblyPathSize = 1024;

constexpr std::string_view kNextReference = "<@NEXT_PROT>";
constexpr std::string_view kIdentifierMarker = "<@PID>";

template <std::size_t kSize>
std::string FixedText(char (&buffer)[kSize]) {
  buffer[kSize - 1] = '\0';
  return buffer;
}

}  // namespace

std::optional<std::string> SelectedReference(const CadDriverTable& driver) {
  const auto part = AskSelectedPart(driver);
  if (!part || part->referenceLength < 1) return std::nullopt;
  const auto ask = [&](char* text, int* room) {
    return driver.GetProtocol(part->name.c_str(), text, room);
  };
  std::string reference;
  if (ReadInTwoSteps(ask, part->referenceLength, reference) != ReadResult::Done) {
    return std::nullopt;
  }
  return reference;
}

// One of the three texts is the reference text; add-ins differ in which. An add-in without an
// active assembly need not touch the size, so only another one asks for another call.
std::optional<ActiveAssembly> AskActiveAssembly(const CadDriverTable& driver) {
  char first[kAssemblyTextSize] = "";
  char second[kAssemblyNameSize] = "";
  const auto ask = [&](char* text, int* room) {
    return driver.GetAssembly(first, second, text, room);
  };
  std::string list;
  int size = kReferenceSize;
  const auto asksAgain = [&] { return size > 0 && size != kReferenceSize; };
  if (!ReadOnce(ask, size, list) && (!asksAgain() || !ReadOnce(ask, size, list))) {
    return std::nullopt;
  }
  std::string texts[] = {FixedText(first), FixedText(second), list};
  ActiveAssembly assembly;
  std::string* const others[] = {&assembly.description, &assembly.identifier};
  std::size_t other = 0;
  for (std::string& text : texts) {
    const bool isReference = text.find(kIdentifierMarker) != std::string::npos;
    if (assembly.reference.empty() && isReference) {
      assembly.reference = std::move(text);
    } else if (other < std::size(others)) {
      *others[other++] = std::move(text);
    }
  }
  if (assembly.reference.empty()) return std::nullopt;
  return assembly;
}

std::string AssemblyPath(const CadDriverTable& driver) {
  char path[kAssemblyPathSize] = "";
  if (!driver.GetAssemblyPath || driver.GetAssemblyPath(path) != 1) return {};
  return FixedText(path);
}

std::optional<std::string> AssemblyName(const CadDriverTable& driver) {
  char name[kAssemblyNameSize] = "";
  if (!driver.GetAssemblyName || driver.GetAssemblyName(name) != 1) return std::nullopt;
  return FixedText(name);
}

std::optional<std::vector<std::string>> SplitAllParts(const CadDriverTable& driver) {
  std::string list;
  const auto ask = [&](char* text, int* size) { return driver.GetAllParts(text, size); };
  if (ReadInTwoSteps(ask, kAllPartsSize, list) != ReadResult::Done) return std::nullopt;
  return SplitList(list, kNextReference);
}

}  // namespace quillmar
