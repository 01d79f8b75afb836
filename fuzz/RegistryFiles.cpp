// Registry files of any contents: what was read is written in a form that is read as the same.
#include "Fuzzing.h"
#include "platform/native/RegistryFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmar::platform;
  constexpr const char16_t* kHive = u"HKEY_CURRENT_USER";
  const std::string once =
      FormatRegistryFile(ParseRegistryFile(quillmar::fuzz::Input(data, size), kHive), kHive);
  const RegistryDocument again = ParseRegistryFile(once, kHive);
  quillmar::fuzz::Require(again.damagedLines.empty(), "what is written is understood");
  quillmar::fuzz::Require(FormatRegistryFile(again, kHive) == once, "nothing changes any more");
  return 0;
}
