// Files that are read at start and while names are made: the language file and profile files.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

#include "ModuleWorld.h"
#include "base/LanguageTable.h"
#include "platform/Profile.h"

namespace quillmar::bench {
namespace {

constexpr const char* kFile = "C:\\windows\\bench.ini";

std::ofstream Open(const TemporaryMachine& machine) {
  return std::ofstream(machine.Root() / "drive_c" / "windows" / "bench.ini", std::ios::binary);
}

// As many texts as the list of sections can name.
void LoadLanguage(benchmark::State& state) {
  TemporaryMachine machine;
  {
    auto file = Open(machine);
    for (int i = 1; i <= state.range(0); ++i) {
      file << "[" << i << "]\r\nEN=Text number " << i << "\r\nDE=~\r\n";
    }
  }
  for (auto step : state) {
    LanguageTable table;
    benchmark::DoNotOptimize(table.Load(kFile, "DE"));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LoadLanguage)->Arg(40)->Arg(400);

// The last key of a file of the given size; the file is new to the reader each time.
void ReadProfileKey(benchmark::State& state) {
  TemporaryMachine machine;
  const auto fill = [&](char mark) {
    auto file = Open(machine);
    std::size_t size = 0;
    for (int i = 0; size < static_cast<std::size_t>(state.range(0)); ++i) {
      const std::string line = "key" + std::to_string(i) + "=value " + mark + "\r\n";
      if (i == 0) file << "[Main]\r\n";
      file << line;
      size += line.size();
    }
    file << "last=" << mark << "\r\n";
  };
  char mark = 'a';
  for (auto step : state) {
    state.PauseTiming();
    mark = mark == 'a' ? 'b' : 'a';
    fill(mark);
    state.ResumeTiming();
    if (platform::ReadProfileText(kFile, "Main", "last", "", 16) != std::string(1, mark)) {
      state.SkipWithError("an old value was read");
      return;
    }
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadProfileKey)->Arg(10 * 1024)->Arg(100 * 1024)->Arg(1024 * 1024);

}  // namespace
}  // namespace quillmar::bench
