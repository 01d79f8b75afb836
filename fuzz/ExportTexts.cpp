// Reference texts given to each export that takes one, and to those that get one from the CAD: the
// finished library on the strict companions.
#include <algorithm>
#include <filesystem>
#include <vector>

#include "Fuzzing.h"
#include "StrictCore.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "platform/native/Machine.h"
#include "quillmar/Exports.h"
#include "quillmar/Storage.h"

namespace {

using namespace quillmar;
namespace fs = std::filesystem;

#define FUZZ_MEMBER(name, convention, result, parameters, arguments) \
  result(convention* name) parameters = nullptr;
struct Module {
  QM_EXPORTS(FUZZ_MEMBER)
};
#define FUZZ_CORE_MEMBER(name, result, parameters, arguments) \
  result(QM_CDECL* name) parameters = nullptr;
struct Core {
  STRICT_CORE_FUNCTIONS(FUZZ_CORE_MEMBER)
};

// A session with the strict add-in; there is no host to be reached, and no wizard to be started.
class World {
 public:
  World() {
    fs::copy(QUILLMAR_STRICT_IMAGE, machine.Root(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (const auto& entry : fs::recursive_directory_iterator(machine.Root())) {
      if (entry.path().extension() == ".exe") programs.push_back(entry.path());
    }
    for (const fs::path& program : programs) fs::remove(program);
    library = Load("C:\\Vantorel\\Quillmar\\Quillmar.dll");
    addIn = Load("C:\\Strictcad\\Strictcad.dll");
    coreLibrary = Load("C:\\Strictcad\\Strictcore.dll");
#define FUZZ_BIND(from, to, name) \
  to.name = reinterpret_cast<decltype(to.name)>(platform::FindFunction(from.Get(), #name));
#define FUZZ_BIND_EXPORT(name, convention, result, parameters, arguments) \
  FUZZ_BIND(library, module, name)
#define FUZZ_BIND_CORE(name, result, parameters, arguments) FUZZ_BIND(coreLibrary, core, name)
    QM_EXPORTS(FUZZ_BIND_EXPORT)
    STRICT_CORE_FUNCTIONS(FUZZ_BIND_CORE)
    int status = 0;
    fuzz::Require(
        module.LoginCad("Strictcad.dll", 0x10, 1, "models", "prt", "fea", "Fuzz", &status) == 1,
        "the login");
    module.Set2dFileType(2);
  }

  Module module;
  Core core;

 private:
  platform::Library Load(const char* path) {
    platform::LoadResult result = platform::LoadLibraryAt(path);
    fuzz::Require(static_cast<bool>(result.library), path);
    return std::move(result.library);
  }

  bench::TemporaryMachine machine;
  std::vector<fs::path> programs;
  platform::Library coreLibrary;
  platform::Library addIn;
  platform::Library library;
};

World& TheWorld() {
  static World world;
  return world;
}

// What is written into a buffer of just that size; the sanitizer watches its ends.
using Buffer = std::vector<char>;

struct Input {
  const char* text;
  std::size_t length;
  int room;  // what the caller says that a buffer holds
};

void CopyProtocol(const Module& module, const Input& input) {
  // Each occurrence of the old identifier, of one letter at least, becomes the new one of 25, and
  // the store may write an item otherwise than it was given.
  Buffer id(QM_PROTOCOL_ID_BUFFER), reference(100 * input.length + 4096);
  module.CopyProtocol(input.text, id.data(), reference.data());
}
void GetAllMcwProtocolIds(const Module& module, const Input& input) {
  Buffer list(static_cast<std::size_t>(input.room) + 1, '#');
  int capacity = input.room;
  const int count = module.GetAllMCWProtocolIDs(input.text, list.data(), &capacity);
  fuzz::Require(count >= 0 || capacity > input.room, "a list that does not fit says its size");
  fuzz::Require(list.back() == '#', "nothing is written behind the capacity");
}
void GetDataValues(const Module& module, const Input& input) {
  Buffer out(static_cast<std::size_t>(input.room) + 1, '#');
  module.GetDataValues(input.text, "d,,note,d", out.data(), input.room);
  fuzz::Require(out.back() == '#', "nothing is written behind the room");
}
void GetProtocolType(const Module& module, const Input& input) {
  Buffer name(input.length + 1);
  int type = -1;
  const int kind = module.GetProtocolType(input.text, name.data(), &type);
  fuzz::Require(kind >= 0 && kind <= 5 && type >= 0 && type <= 10, "kinds and types are known");
}
void IsSmartPart(const Module& module, const Input& input) { module.IsSmartPart(input.text); }
void MCWRecalculate(const Module& module, const Input& input) {
  module.MCWRecalculate(input.text, 0, 1, 2);
}

// The CAD gives the text for whatever object it is asked.
void ObtainProtocol(const Module& module, const Input&) { module.ObtainProtocol("Object:1"); }
void OnAllParts(const Module& module, const Input&) {
  module.RefreshAllLinks();
  module.UpdateExtendedData();
}
void OnSelectedPart(const Module& module, const Input&) {
  module.CreateUniqueCopy();
  module.CallOptim();
  module.DataWizard();
}
void QueuedCommand(const Module& module, const Input& input) {
  constexpr int kNumbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 103, 4004};
  module.CallUTFunction(kNumbers[static_cast<std::size_t>(input.room) % std::size(kNumbers)]);
  platform::PumpMessages();
}

struct Road {
  void (*take)(const Module& module, const Input& input);
  bool leavesNothing;  // in the store
};
constexpr Road kRoads[] = {{&CopyProtocol, false},   {&GetAllMcwProtocolIds, true},
                           {&GetDataValues, true},   {&GetProtocolType, true},
                           {&IsSmartPart, true},     {&MCWRecalculate, false},
                           {&ObtainProtocol, false}, {&OnAllParts, false},
                           {&OnSelectedPart, false}, {&QueuedCommand, false}};

}  // namespace

// The first byte chooses the export, the second the room that it is offered or the command.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  World& world = TheWorld();
  const std::string text = std::string(fuzz::Input(data + 2, size - 2)).c_str();
  for (const char* output :
       {"GetProtocol.text", "GetPart.text", "GetAllParts.text", "GetAssembly.text"}) {
    world.core.Strict_SetAnswer(output, text.c_str());
  }
  world.core.Strict_SetAnswer("GetPart.partName", "Object:1");
  const Road& road = kRoads[data[0] % std::size(kRoads)];
  road.take(world.module, {text.c_str(), text.size(), data[1]});
  if (world.core.Strict_ViolationCount() > 0) {
    fuzz::Require(false, world.core.Strict_Violation(0));
  }
  fuzz::Require(!road.leavesNothing || world.core.Strict_StoredProtocols() == 0,
                "a question leaves nothing in the store");
  fuzz::Require(world.core.Strict_OpenProtocols() == 0, "what was opened is closed");
  world.core.Strict_Reset();
  platform::Machine::Current().DebugLines().clear();
  platform::Machine::Current().Shown().clear();
  return 0;
}
