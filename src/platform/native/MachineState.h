// What a machine of the native backend consists of.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/Registry.h"
#include "platform/native/AutomationTable.h"
#include "platform/native/HiveStore.h"
#include "platform/native/Machine.h"
#include "platform/native/Paths.h"
#include "platform/native/ProfileCache.h"
#include "platform/native/Programs.h"
#include "platform/native/WindowSystem.h"

namespace quillmar::platform {

// What was written to the debugger. Hives that outlive the machine write to it, too.
struct DebugRecord {
  void Add(const std::string& line) {
    std::lock_guard guard(mutex);
    lines.push_back(line);
  }

  std::mutex mutex;
  std::vector<std::string> lines;
};

struct Machine::State {
  explicit State(const std::filesystem::path& root);

  std::shared_ptr<HiveStore> HiveOf(Hive hive) const {
    return hive == Hive::CurrentUser ? currentUser : localMachine;
  }

  // Milliseconds of the clock; a set clock moves on.
  std::uint32_t ReadClock();

  Paths paths;
  std::shared_ptr<DebugRecord> debugRecord = std::make_shared<DebugRecord>();
  // Handles on keys and windows may outlive the machine.
  std::shared_ptr<HiveStore> currentUser;
  std::shared_ptr<HiveStore> localMachine;
  std::shared_ptr<WindowSystem> windows;
  ProfileCache profiles{paths};
  // Destroyed in reverse: the objects that programs registered live in the programs' code.
  InProcessPrograms programs;
  AutomationTable automation;

  std::mutex mutex;  // of what follows
  std::optional<std::uint32_t> setClock;
  std::optional<std::uint32_t> volumeSerial;
  std::vector<std::string> searchPath;
  ScriptedAnswers answers;
  std::vector<ShownDialog> shown;
};

}  // namespace quillmar::platform
