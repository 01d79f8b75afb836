// Profile files of any contents: reading, and a change that must be found again.
#include "Fuzzing.h"
#include "platform/native/ProfileFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using quillmar::fuzz::Require;
  using quillmar::platform::ProfileFile;
  const std::string bytes(quillmar::fuzz::Input(data, size));
  const ProfileFile file(bytes);
  for (const std::u16string_view section : file.Sections()) {
    for (const std::u16string_view key : file.Keys(section)) file.Find(section, key);
  }
  if (const auto changed = file.WithValue(u"Fuzz", u"Key", u"value")) {
    Require(ProfileFile(*changed).Find(u"fuzz", u"KEY") == u"value", "a value written is there");
    const auto without = ProfileFile(*changed).WithoutKey(u"Fuzz", u"Key");
    Require(without.has_value(), "a key written can be removed");
  }
  file.WithoutSection(u"Fuzz");
  return 0;
}
