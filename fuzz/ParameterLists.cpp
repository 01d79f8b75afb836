// Parameter lists as the CAD hands them in, with two and with five tokens an item.
#include "parts/ParameterLists.h"
#include "Fuzzing.h"

namespace {

using namespace quillmar;

short QM_STDCALL PutDataParam(const char*, const char* name, const char* value, const char* unit) {
  fuzz::Require(*name != '\0' && value != nullptr && unit != nullptr, "a parameter has a name");
  fuzz::Require(*value != '*', "a marked value is no parameter");
  return 1;
}

short QM_STDCALL GetDataParam(const char*, const char* name, char* value, char* unit) {
  value[0] = name[0];
  value[1] = unit[0] = '\0';
  return name[0] % 2 == 0 ? 1 : 0;
}

const bench::ModuleWorld& World() {
  static const bench::ModuleWorld world = [] {
    StorageTable storage = bench::InstantStorage({});
    storage.Com_PutDataParam.pointer = &PutDataParam;
    storage.Com_GetDataParam.pointer = &GetDataParam;
    return bench::ModuleWorld(storage, bench::InstantLinks(), bench::InstantDriver());
  }();
  return world;
}

}  // namespace

// The first line is the group, its first character the separator.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Input(data, size);
  std::string group(fuzz::TakeUntil(input, '\n'));
  const char separator = group.empty() ? ',' : group[0];
  if (!group.empty()) group.erase(0, 1);
  // Lists come as zero-terminated texts.
  const std::string list = std::string(input).c_str();
  VXProtocol protocol(World().Protocols());
  protocol.CreateNew();
  ApplyParameterList(protocol, CadSession{}, list, group, separator);
  return 0;
}
