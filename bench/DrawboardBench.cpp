// Inserts into a document of the stand-in CAD: through the module with the real storage library,
// and the same calls of the CAD alone.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "RealCompanions.h"
#include "drawboard/Drawboard.h"
#include "parts/PartFactory.h"
#include "platform/Modules.h"

namespace quillmar::bench {
namespace {

constexpr const char* kDocument = "C:\\Drawboard\\Bench.json";
constexpr int kParameters = 20;

// The arguments of one insert.
struct Inserted {
  std::string id, model, parameters, connection, file, caption;
  int local;
};
std::vector<Inserted>* inserts = nullptr;
decltype(CadDriverTable::InsertParamPart.pointer) realInsert = nullptr;

int QM_CDECL RecordInsert(const char* id, const char* model, const char* parameters,
                          const char* connection, int local, const char* file, const char* caption,
                          const ExtDataPair* pairs, int count) {
  if (inserts != nullptr) {
    inserts->push_back({id, model, parameters, connection, file, caption, local});
  }
  return realInsert(id, model, parameters, connection, local, file, caption, pairs, count);
}

// The CAD of the image beside the real companions.
class Board {
 public:
  Board() {
    namespace fs = std::filesystem;
    const fs::path folder = platform::Machine::Current().HostPath("C:\\Drawboard");
    fs::create_directories(folder);
    fs::copy_file(fs::path(QUILLMAR_IMAGE) / "drive_c/Drawboard/Drawboard.dll",
                  folder / "Drawboard.dll");
    library = platform::LoadLibraryAt("C:\\Drawboard\\Drawboard.dll").library;
    driver.Bind(library.Get());
  }
  bool IsLoaded() const { return driver.IsBound(); }
  const CadDriverTable& Driver() const { return driver; }
  // The same, with inserts taken down.
  CadDriverTable Recorded() const {
    CadDriverTable recorded = driver;
    realInsert = driver.InsertParamPart.pointer;
    recorded.InsertParamPart.pointer = &RecordInsert;
    return recorded;
  }
  void NewDocument() const {
    using New = int (*)(const char*, const char*);
    const auto make =
        reinterpret_cast<New>(platform::FindFunction(library.Get(), "Drawboard_NewDocument"));
    if (make(kDocument, "mm") != 1) std::abort();
  }

 private:
  platform::Library library;
  CadDriverTable driver;
};

std::string MakeProtocol(const ModuleWorld& world, int number) {
  VXProtocol protocol(world.Protocols());
  protocol.CreateNew();
  protocol.PutKeyWord("Main", "DataFile", "KEELDATA|GEAR1");
  protocol.SetTypeOfPart(2);
  protocol.PutGlobalData("Caption", "Gear " + std::to_string(number));
  protocol.PutViewKey("MODEL");
  for (int i = 0; i < kParameters; ++i) {
    protocol.PutDataParam("parameter" + std::to_string(i), "2.5", "mm");
  }
  return protocol.GetProtocolID();
}

void InsertAll(const ModuleWorld& world, const std::vector<std::string>& ids) {
  for (const std::string& id : ids) {
    VXProtocol protocol(world.Protocols(), id);
    const auto part = CreatePartForProtocol(world.Services(), protocol);
    if (!part || !part->Insert(InsertMode::Plain)) std::abort();
  }
}

void InsertOnDrawboard(benchmark::State& state, bool throughModule) {
  const RealCompanions real;
  const Board board;
  if (!real.Loaded() || !board.IsLoaded()) {
    state.SkipWithError("libraries are missing in the image");
    return;
  }
  const ModuleWorld world(real.Storage(), real.Links(), board.Driver());
  std::vector<std::string> ids;
  for (int i = 0; i < state.range(0); ++i) ids.push_back(MakeProtocol(world, i));
  std::vector<Inserted> taken;
  board.NewDocument();
  inserts = &taken;
  InsertAll(ModuleWorld(real.Storage(), real.Links(), board.Recorded()), ids);
  inserts = nullptr;
  for (auto step : state) {
    state.PauseTiming();
    board.NewDocument();
    state.ResumeTiming();
    if (throughModule) {
      InsertAll(world, ids);
      continue;
    }
    for (const Inserted& one : taken) {
      realInsert(one.id.c_str(), one.model.c_str(), one.parameters.c_str(), one.connection.c_str(),
                 one.local, one.file.c_str(), one.caption.c_str(), nullptr, 0);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(InsertOnDrawboard, ThroughModule, true)
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(InsertOnDrawboard, CadAlone, false)
    ->Arg(1)
    ->Arg(10)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmar::bench
