// Opening, reading and closing a protocol on the real storage library: through VXProtocol, and by
// the entry points called directly.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "InstantCompanions.h"
#include "RealCompanions.h"
#include "protocol/VXProtocol.h"

namespace quillmar::bench {
namespace {

constexpr int kReads = 10;

std::string MakeProtocol(const ModuleWorld& world) {
  VXProtocol protocol(world.Protocols());
  protocol.CreateNew();
  protocol.PutKeyWord("Cadx", "FromCad", "1");
  return protocol.GetProtocolID();
}

void ReadThroughObject(benchmark::State& state) {
  RealCompanions real;
  ModuleWorld world(real.Storage(), real.Links(), InstantDriver());
  const std::string id = MakeProtocol(world);
  std::string value;
  for (auto step : state) {
    VXProtocol protocol(world.Protocols(), id);
    for (int i = 0; i < kReads; ++i) protocol.GetKeyWord("Cadx", "FromCad", value);
    benchmark::DoNotOptimize(value.data());
  }
}
BENCHMARK(ReadThroughObject);

void ReadDirectly(benchmark::State& state) {
  RealCompanions real;
  ModuleWorld world(real.Storage(), real.Links(), InstantDriver());
  const std::string id = MakeProtocol(world);
  const StorageTable& storage = real.Storage();
  std::string value;
  for (auto step : state) {
    char buffer[QM_PROTOCOL_ID_BUFFER] = {};
    std::memcpy(buffer, id.data(), id.size());
    storage.Com_OpenProtocol(buffer);
    for (int i = 0; i < kReads; ++i) {
      char text[1025];
      std::memset(text, ' ', 1024);
      text[1024] = '\0';
      storage.Com_GetKeyWord(id.c_str(), "Cadx", "FromCad", text);
      value = text;
    }
    benchmark::DoNotOptimize(value.data());
    storage.Com_CloseProtocol(id.c_str());
  }
}
BENCHMARK(ReadDirectly);

}  // namespace
}  // namespace quillmar::bench
