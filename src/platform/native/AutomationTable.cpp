#include "platform/native/AutomationTable.h"

#include <utility>

#include "platform/System.h"

namespace quillmar::platform {

void AutomationTable::Register(const std::string& classId,
                               std::shared_ptr<AutomationServer> server) {
  auto object = std::make_shared<RunningObject>(std::move(server));
  std::lock_guard guard(mutex);
  std::string id = UpperCase(classId);
  active[id] = object;
  handedOut.emplace(id, object);
}

void AutomationTable::Revoke(const std::string& classId) {
  std::lock_guard guard(mutex);
  active.erase(UpperCase(classId));
}

void AutomationTable::End(const std::string& classId) {
  std::vector<std::shared_ptr<RunningObject>> ended;
  {
    std::lock_guard guard(mutex);
    std::string id = UpperCase(classId);
    auto [first, last] = handedOut.equal_range(id);
    for (auto entry = first; entry != last; ++entry) ended.push_back(entry->second.lock());
    handedOut.erase(first, last);
    active.erase(id);
  }
  for (const auto& object : ended) {
    if (object) object->End();
  }
}

void AutomationTable::SetFactory(const std::string& classId,
                                 std::function<std::shared_ptr<AutomationServer>()> make) {
  std::lock_guard guard(mutex);
  factories[UpperCase(classId)] = std::move(make);
}

std::shared_ptr<RunningObject> AutomationTable::Active(const std::string& classId) const {
  std::lock_guard guard(mutex);
  auto found = active.find(UpperCase(classId));
  return found == active.end() ? nullptr : found->second;
}

std::shared_ptr<RunningObject> AutomationTable::Make(const std::string& classId) {
  std::string id = UpperCase(classId);
  std::function<std::shared_ptr<AutomationServer>()> factory;
  {
    std::lock_guard guard(mutex);
    auto found = factories.find(id);
    if (found != factories.end()) factory = found->second;
  }
  std::shared_ptr<AutomationServer> server = factory ? factory() : nullptr;
  if (server == nullptr) return nullptr;
  auto object = std::make_shared<RunningObject>(std::move(server));
  std::lock_guard guard(mutex);
  handedOut.emplace(id, object);
  return object;
}

}  // namespace quillmar::platform
