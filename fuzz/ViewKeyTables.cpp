// "ProtConv.ini" of any contents: the table of view keys that is read from it.
#include <fstream>

#include "Fuzzing.h"
#include "conversion/ViewKeyMapping.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmar;
  static const bench::TemporaryMachine machine;
  static int number = 0;
  // The platform may keep what it read of a file, so each gets a name of its own.
  const std::string name = "Prot" + std::to_string(number++) + ".ini";
  const std::filesystem::path file = machine.Root() / "drive_c" / name;
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  ViewKeyMapping mapping;
  const bool loaded = mapping.Load(ConverterKind::Default, "C:\\" + name, "Drawboard_Default_1->2");
  const std::string* first = mapping.Find("");
  if (loaded) fuzz::Require(first != nullptr && !first->empty(), "a table has an entry");
  mapping.Find("SHAFT");
  std::filesystem::remove(file);
  return 0;
}
