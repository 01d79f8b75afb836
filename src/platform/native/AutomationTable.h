// Automation objects of the machine: the table of active objects, and how new ones are made.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/native/Machine.h"

namespace quillmar::platform {

// An object that programs refer to; without a server once its program has ended.
class RunningObject {
 public:
  explicit RunningObject(std::shared_ptr<AutomationServer> offered) : server(std::move(offered)) {}

  std::shared_ptr<AutomationServer> Server() const {
    std::lock_guard guard(mutex);
    return server;
  }
  void End() {
    std::shared_ptr<AutomationServer> ended;
    std::lock_guard guard(mutex);
    ended.swap(server);
  }

 private:
  mutable std::mutex mutex;
  std::shared_ptr<AutomationServer> server;
};

class AutomationTable {
 public:
  void Register(const std::string& classId, std::shared_ptr<AutomationServer> server);
  void Revoke(const std::string& classId);
  void End(const std::string& classId);
  void SetFactory(const std::string& classId,
                  std::function<std::shared_ptr<AutomationServer>()> make);

  // Null when there is none.
  std::shared_ptr<RunningObject> Active(const std::string& classId) const;
  // A new object from the class's factory; null without a factory or when it makes none.
  std::shared_ptr<RunningObject> Make(const std::string& classId);

 private:
  // Identifiers are compared in capitals.
  mutable std::mutex mutex;
  std::map<std::string, std::shared_ptr<RunningObject>> active;
  std::map<std::string, std::function<std::shared_ptr<AutomationServer>()>> factories;
  std::multimap<std::string, std::weak_ptr<RunningObject>> handedOut;
};

}  // namespace quillmar::platform
