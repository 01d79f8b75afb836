#include "ModuleWorld.h"

#include <stdlib.h>

#include <fstream>

namespace quillmar::bench {
namespace {

std::filesystem::path MakeRoot() {
  std::string pattern = (std::filesystem::temp_directory_path() / "quillmar-bench-XXXXXX").string();
  const std::filesystem::path root = ::mkdtemp(pattern.data());
  std::filesystem::create_directories(root / "drive_c" / "windows");
  std::filesystem::create_directories(root / "registry");
  // As on a machine with the suite: a file that is not there is searched for at every report.
  std::ofstream(root / "drive_c" / "windows" / "Afx.ini") << "[Diagnostics]\nTraceEnabled=0\n";
  return root;
}

}  // namespace

ModuleWorld::ModuleWorld(const StorageTable& storageTable, const LinkTable& linkTable,
                         const CadDriverTable& driverTable)
    : storage(storageTable),
      links(linkTable),
      driver(driverTable),
      protocols{storage, links, errors, activator},
      host({.paths = paths,
            .protocols = protocols,
            .ipc = ipc,
            .session = [] { return std::nullopt; },
            .showError = [](const std::string&) {}}),
      options({}, GetModuleRegistryKey(false)),
      services{session, driver, bolted,    host, options,   fileNames, texts,
               paths,   tags,   converter, ids,  protocols, errors,    axisOverlap} {
  session.modelExt = "dbp";
  session.modelDirName = "Bench";
}

TemporaryMachine::TemporaryMachine() : root(MakeRoot()), machine(root), scope(machine) {
  // A set clock moves with each reading: making an identifier does not wait for the next
  // millisecond, which would hide everything else.
  machine.SetClock(0);
}

TemporaryMachine::~TemporaryMachine() {
  std::error_code ignored;
  std::filesystem::remove_all(root, ignored);
}

}  // namespace quillmar::bench
