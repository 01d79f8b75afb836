// Texts that are taken apart, joined and changed: the module alone, beside what Abseil's string
// functions do for the same split, join or replacement.
#include <absl/strings/str_cat.h>
#include <absl/strings/str_join.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#include <absl/strings/string_view.h>
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

#include "InstantCompanions.h"
#include "ModuleWorld.h"
#include "base/Texts.h"
#include "naming/NameTemplate.h"
#include "naming/SafeFileName.h"
#include "parts/ParameterLists.h"

namespace quillmar::bench {
namespace {

std::string Repeated(std::string_view piece, std::int64_t times) {
  std::string text;
  for (std::int64_t i = 0; i < times; ++i) text += piece;
  return text;
}

void Bytes(benchmark::State& state, const std::string& text) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

// --- templates: a token for each ten characters ---

std::string Template(const benchmark::State& state) {
  return Repeated("ab %Mass% ", state.range(0) / 10);
}

void TemplateExpansion(benchmark::State& state) {
  const std::string text = Template(state);
  const TokenValue valueOf = [](const std::string&) { return std::string("12.5"); };
  for (auto step : state) benchmark::DoNotOptimize(ExpandNameTemplate(text, valueOf));
  Bytes(state, text);
}
BENCHMARK(TemplateExpansion)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

void TemplateExpansionAbseil(benchmark::State& state) {
  const std::string text = Template(state);
  for (auto step : state) {
    benchmark::DoNotOptimize(absl::StrReplaceAll(text, {{"%Mass%", "12.5"}}));
  }
  Bytes(state, text);
}
BENCHMARK(TemplateExpansionAbseil)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

// --- file names ---

void SafeFileName(benchmark::State& state) {
  const std::string text = Repeated("Shaft 20/30*4 ", state.range(0) / 14);
  for (auto step : state) {
    std::string name = text;
    MakeSafeFileName(name);
    benchmark::DoNotOptimize(name);
  }
  Bytes(state, text);
}
BENCHMARK(SafeFileName)->Arg(140)->Arg(14000);

// A tenth of the characters that the module replaces.
void SafeFileNameAbseil(benchmark::State& state) {
  const std::string text = Repeated("Shaft 20/30*4 ", state.range(0) / 14);
  for (auto step : state) {
    std::string name = text;
    absl::StrReplaceAll({{"/", "_"}, {"*", "_"}, {":", "_"}, {"?", "_"}}, &name);
    benchmark::DoNotOptimize(name);
  }
  Bytes(state, text);
}
BENCHMARK(SafeFileNameAbseil)->Arg(140)->Arg(14000);

// --- parameter lists to and from the CAD ---

void ListBuilt(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({.parameters = static_cast<int>(state.range(0))}),
                    InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  std::string text;
  for (auto step : state) BuildParameterList(protocol, ListForm::Values, {}, text);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ListBuilt)->Arg(10)->Arg(1000)->Arg(30000);

// The same reads, replaced and joined by Abseil.
void ListBuiltAbseil(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({}), InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  std::string name, value, unit;
  for (auto step : state) {
    std::string text;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      protocol.GetDataItem(static_cast<short>(i), name, value, unit);
      absl::StrAppend(&text, name, ",", absl::StrReplaceAll(value, {{",", "<VXCOMMA>"}}), ",");
    }
    benchmark::DoNotOptimize(text);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ListBuiltAbseil)->Arg(10)->Arg(1000)->Arg(30000);

std::string ReceivedList(const benchmark::State& state) {
  return Repeated("diameter;12VXCOMMA5;mm;;outer diameter;", state.range(0));
}

void ReceivedListTaken(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({}), InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  const std::string text = ReceivedList(state);
  for (auto step : state) ApplyParameterList(protocol, world.Services().session, text, "G", ';');
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReceivedListTaken)->Arg(10)->Arg(1000)->Arg(30000);

// Split and replaced by Abseil, and the same calls to the store.
void ReceivedListAbseil(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({}), InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  const std::string text = ReceivedList(state);
  std::string oldValue, oldUnit;
  for (auto step : state) {
    std::vector<std::string> item;
    for (const absl::string_view token : absl::StrSplit(text, ';')) {
      item.push_back(absl::StrReplaceAll(token, {{"<VXCOMMA>", ","}, {"VXCOMMA", ","}}));
      if (item.size() < 5) continue;
      const std::string name = absl::StrCat("VXP_G_", item[0]);
      protocol.GetDataParam(name, oldValue, oldUnit);
      protocol.PutDataParam(name, item[1], item[2]);
      protocol.WriteDescription(name, item[4]);
      item.clear();
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReceivedListAbseil)->Arg(10)->Arg(1000)->Arg(30000);

// --- reference texts ---

constexpr const char* kElement = "<@EL>";

std::string Items(const benchmark::State& state) {
  return Repeated("[Data]diameter=12.5|mm<@EL>", state.range(0));
}

void ReferenceSplit(benchmark::State& state) {
  const std::string text = Items(state);
  for (auto step : state) benchmark::DoNotOptimize(SplitTerminated(text, kElement));
  Bytes(state, text);
}
BENCHMARK(ReferenceSplit)->Arg(10)->Arg(1000)->Arg(100000)->Arg(400000);

void ReferenceSplitAbseil(benchmark::State& state) {
  const std::string text = Items(state);
  for (auto step : state) {
    const std::vector<absl::string_view> pieces = absl::StrSplit(text, absl::ByString(kElement));
    benchmark::DoNotOptimize(pieces);
  }
  Bytes(state, text);
}
BENCHMARK(ReferenceSplitAbseil)->Arg(10)->Arg(1000)->Arg(100000)->Arg(400000);

// Split, and handed to the store as a list.
void ReferencePut(benchmark::State& state) {
  TemporaryMachine machine;
  ModuleWorld world(InstantStorage({}), InstantLinks(), InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  const std::string text = "P0000001<@PID>" + Items(state);
  for (auto step : state) {
    benchmark::DoNotOptimize(protocol.PutBufferFromReference(text, Markers::Standard));
  }
  Bytes(state, text);
}
BENCHMARK(ReferencePut)->Arg(10)->Arg(1000)->Arg(100000)->Arg(400000);

// Taken from the store as a list, and joined.
void ReferenceMade(benchmark::State& state) {
  TemporaryMachine machine;
  const std::string text = Items(state);
  ModuleWorld world(InstantStorage({.buffer = SplitTerminated(text, kElement)}), InstantLinks(),
                    InstantDriver());
  VXProtocol protocol(world.Protocols(), "P0000001");
  std::string reference;
  for (auto step : state) protocol.MakeReference(reference, Markers::Standard);
  if (!reference.ends_with(text)) state.SkipWithError("not the whole text");
  Bytes(state, text);
}
BENCHMARK(ReferenceMade)->Arg(10)->Arg(1000)->Arg(100000)->Arg(400000);

// From texts that end with NUL, as the store hands them out; but side by side, not in a list.
void ReferenceJoinAbseil(benchmark::State& state) {
  const std::string text = Items(state);
  const std::vector<std::string> pieces = absl::StrSplit(text, absl::ByString(kElement));
  std::vector<const char*> texts;
  for (const auto& piece : pieces) texts.push_back(piece.c_str());
  for (auto step : state) benchmark::DoNotOptimize(absl::StrJoin(texts, kElement));
  Bytes(state, text);
}
BENCHMARK(ReferenceJoinAbseil)->Arg(10)->Arg(1000)->Arg(100000)->Arg(400000);

}  // namespace
}  // namespace quillmar::bench
