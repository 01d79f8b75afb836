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

struct Machine::State {
  explicit State(const std::filesystem::path& root);

  std::shared_ptr<HiveStore> HiveOf(Hive hive) const {
    return hive == Hive::CurrentUser ? currentUser : localMachine;
  }

  // Milliseconds of the clock; a set clock moves on.
  std::uint32_t ReadClock();

  Paths paths;
  // Handles on keys and windows may outlive the machine.
  std::shared_ptr<HiveStore> currentUser;
  std::shared_ptr<HiveStore> localMachine;
  std::shared_ptr<WindowSystem> windows;
  ProfileCache profiles;
  // Destroyed in reverse: the objects that programs registered live in the programs' code.
  InProcessPrograms programs;
  AutomationTable automation;

  std::mutex mutex;  // of what follows
  std::optional<std::uint32_t> setClock;
  std::optional<std::uint32_t> volumeSerial;
  std::vector<std::string> searchPath;
  ScriptedAnswers answers;
  std::vector<ShownDialog> shown;
  std::vector<std::string> debugLines;
};

}  // namespace quillmar::platform
