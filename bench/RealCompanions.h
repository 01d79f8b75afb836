// The real storage and link libraries on a database of their own, and a recording of the calls
// that an operation makes to them, which can be made again without the module in between.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

#include "ModuleWorld.h"
#include "protocol/ProtocolLibraries.h"

namespace quillmar::bench {

class RealCompanions {
 public:
  RealCompanions();
  ~RealCompanions();

  const StorageTable& Storage() const { return libraries.Storage(); }
  const LinkTable& Links() const { return libraries.Links(); }
  // False when the libraries could not be loaded; benchmarks then say so and end.
  bool Loaded() const { return loaded; }

 private:
  TemporaryMachine machine;
  ProtocolLibraries libraries;
  bool loaded = false;
};

using Recording = std::vector<std::function<void()>>;

// Tables that pass every call on to the real ones and append it to `calls` while that is not null.
// One at a time.
struct RecordingTables {
  StorageTable storage;
  LinkTable links;
};
RecordingTables RecordInto(const StorageTable& storage, const LinkTable& links, Recording*& calls);

// What is measured; done again and again it finds the same store.
using Step = std::function<void()>;
// Makes it for the world that it is given, which must live longer.
using Work = std::function<Step(const ModuleWorld&)>;
// Makes the protocols that the work needs.
using Preparation = std::function<Work(const ModuleWorld&)>;

// A calculated gear with so many parameters, in the store of that world. Gives its identifier.
std::string MakeGear(const ModuleWorld& world, int parameters);

// The work through the module, or the library calls that it made, made again.
void OnRealStorage(benchmark::State& state, const Preparation& prepare,
                   const CadDriverTable& driver, bool throughModule);

}  // namespace quillmar::bench
