#include "commands/CadQuestions.h"

#include <cstring>
#include <memory>
#include <new>

#include "base/Texts.h"

namespace quillmar {
namespace {

constexpr int kReferenceSize = 65536;  // first try; the buffer holds a NUL more
constexpr int kAllPartsSize = 65535;
constexpr std::size_t kPartNameSize = 1024;
constexpr std::size_t kAssemblyTextSize = 1024;
constexpr std::size_t kAssemblyNameSize = 260;
constexpr std::size_t kAssemblyPathSize = 1024;

constexpr std::string_view kNextReference = "<@NEXT_PROT>";
constexpr std::string_view kIdentifierMarker = "<@PID>";

// A buffer of the size that a driver function is told, and a NUL more.
class ListBuffer {
 public:
  explicit ListBuffer(int capacity)
      : room(static_cast<std::size_t>(capacity)), text(new (std::nothrow) char[room + 1]) {
    if (text) text[0] = '\0';
  }
  char* Get() const { return text.get(); }
  std::string Text() const { return std::string(text.get(), ::strnlen(text.get(), room)); }

 private:
  std::size_t room;
  std::unique_ptr<char[]> text;
};

// Calls with the usual size, and once more when the text needs a larger buffer.
template <class DriverCall>
std::optional<std::string> AskList(int size, const DriverCall& call) {
  for (int attempt = 0; attempt < 2 && size > 0; ++attempt) {
    const ListBuffer buffer(size);
    if (buffer.Get() == nullptr) break;
    if (call(buffer.Get(), &size) != 0) return buffer.Text();
  }
  return std::nullopt;
}

template <std::size_t kSize>
std::string FixedText(char (&buffer)[kSize]) {
  buffer[kSize - 1] = '\0';
  return buffer;
}

}  // namespace

// The first question tells the name and the length of the text, the second gives the text.
std::optional<std::string> SelectedReference(const CadDriverTable& driver) {
  char name[kPartNameSize] = "";
  int size = kReferenceSize;
  {
    const ListBuffer buffer(size);
    if (buffer.Get() == nullptr) return std::nullopt;
    const bool answered = driver.GetPart(name, buffer.Get(), &size) != 0;
    // A text beyond the buffer counts as answered: its length is what was asked for.
    if (!answered && size <= kReferenceSize) return std::nullopt;
  }
  if (size < 1) return std::nullopt;
  const std::string partName = FixedText(name);
  return AskList(size, [&](char* text, int* room) {
    return driver.GetProtocol(partName.c_str(), text, room);
  });
}

// One of the three texts is the reference text; add-ins differ in which.
std::optional<ActiveAssembly> AskActiveAssembly(const CadDriverTable& driver) {
  char first[kAssemblyTextSize] = "";
  char second[kAssemblyNameSize] = "";
  const auto list = AskList(kReferenceSize, [&](char* text, int* size) {
    return driver.GetAssembly(first, second, text, size);
  });
  if (!list) return std::nullopt;
  std::string texts[] = {FixedText(first), FixedText(second), *list};
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
  const auto list =
      AskList(kAllPartsSize, [&](char* text, int* size) { return driver.GetAllParts(text, size); });
  if (!list) return std::nullopt;
  return SplitList(*list, kNextReference);
}

}  // namespace quillmar
