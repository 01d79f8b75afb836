#include "platform/Registry.h"

#include <iterator>
#include <utility>

#include "platform/native/CodePage.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

constexpr std::size_t kLongestValueName = 16383;

// Readers of texts count on a NUL at the end, as on Windows; only an empty list has none.
std::string Terminated(std::string data, std::uint32_t type) {
  bool open = data.empty() ? type != kRegistryTextList : data.back() != '\0';
  if (open) data += '\0';
  return data;
}

StoredValue Store(const std::string& name, RegistryType type, const std::string& data) {
  StoredValue stored;
  stored.name = Widen(name);
  stored.type = static_cast<std::uint32_t>(type);
  bool text = IsTextType(stored.type);
  stored.bytes = text ? BytesOfText(Widen(Terminated(data, stored.type))) : data;
  return stored;
}

RegistryValue Load(const StoredValue& stored) {
  bool text = IsTextType(stored.type);
  return {static_cast<RegistryType>(stored.type),
          text ? Narrow(TextOfBytes(stored.bytes)) : stored.bytes};
}

// Names end at a NUL, like every text of the system.
std::string AsText(const std::string& name) { return name.c_str(); }

bool IsRelative(const std::string& path) { return path.empty() || path.front() != '\\'; }

}  // namespace

// An open key by its place: it survives that the file is read again.
struct RegistryHandle::Backend {
  std::shared_ptr<HiveStore> hive;
  std::u16string path;

  // Looks at this key; nothing happens when it was deleted in the meantime.
  template <typename Function>
  void Look(Function look) const {
    hive->Look([&](RegistryNode& root) {
      if (RegistryNode* node = root.Find(path)) look(*node);
    });
  }

  template <typename Function>
  bool Change(Function change) const {
    return hive->Change([&](RegistryNode& root) {
      RegistryNode* node = root.Find(path);
      return node != nullptr ? change(*node) : HiveChange::Failed;
    });
  }
};

RegistryHandle::RegistryHandle(std::unique_ptr<Backend> opened) : backend(std::move(opened)) {}
RegistryHandle::RegistryHandle(RegistryHandle&&) noexcept = default;
RegistryHandle& RegistryHandle::operator=(RegistryHandle&&) noexcept = default;
RegistryHandle::~RegistryHandle() = default;

std::optional<RegistryValue> RegistryHandle::Query(const std::string& name) const {
  std::optional<RegistryValue> found;
  backend->Look([&](RegistryNode& node) {
    auto value = node.values.find(Fold(Widen(AsText(name))));
    if (value != node.values.end()) found = Load(value->second);
  });
  return found;
}

bool RegistryHandle::Set(const std::string& name, RegistryType type, const std::string& data) {
  StoredValue fresh = Store(AsText(name), type, data);
  if (fresh.name.size() > kLongestValueName) return false;
  return backend->Change([&](RegistryNode& node) {
    auto value = node.values.find(Fold(fresh.name));
    if (value != node.values.end() && value->second.type == fresh.type &&
        value->second.bytes == fresh.bytes) {
      return HiveChange::Nothing;
    }
    node.Set(std::move(fresh));
    return HiveChange::Made;
  });
}

bool RegistryHandle::DeleteValue(const std::string& name) {
  return backend->Change([&](RegistryNode& node) {
    std::size_t removed = node.values.erase(Fold(Widen(AsText(name))));
    return removed > 0 ? HiveChange::Made : HiveChange::Failed;
  });
}

bool RegistryHandle::DeleteSubKey(const std::string& name) {
  std::u16string path = Widen(AsText(name));
  return backend->Change([&](RegistryNode& node) {
    RegistryNode* child = node.Find(path);
    if (child == nullptr || child == &node || !child->children.empty()) return HiveChange::Failed;
    node.Erase(path);
    return HiveChange::Made;
  });
}

std::optional<std::string> RegistryHandle::SubKeyAt(std::uint32_t index) const {
  std::optional<std::string> found;
  backend->Look([&](RegistryNode& node) {
    if (index < node.children.size()) {
      found = Narrow(std::next(node.children.begin(), index)->second.name);
    }
  });
  return found;
}

std::optional<NamedRegistryValue> RegistryHandle::ValueAt(std::uint32_t index) const {
  std::optional<NamedRegistryValue> found;
  backend->Look([&](RegistryNode& node) {
    if (index < node.values.size()) {
      const StoredValue& value = std::next(node.values.begin(), index)->second;
      found = NamedRegistryValue{Narrow(value.name), Load(value)};
    }
  });
  return found;
}

struct RegistryBatch::Backend {
  std::shared_ptr<HiveStore> hive;
};

RegistryBatch::RegistryBatch(Hive hive)
    : backend(std::make_unique<Backend>(Backend{Machine::Current().Internals().HiveOf(hive)})) {
  backend->hive->Begin();
}

RegistryBatch::~RegistryBatch() {
  if (backend) backend->hive->End(false);
}

bool RegistryBatch::Commit() {
  const std::unique_ptr<Backend> ended = std::move(backend);
  return ended && ended->hive->End(true);
}

std::optional<RegistryHandle> OpenKey(Hive hive, const std::string& path) {
  if (!IsRelative(path)) return std::nullopt;
  auto backend = std::make_unique<RegistryHandle::Backend>();
  backend->hive = Machine::Current().Internals().HiveOf(hive);
  backend->path = Widen(AsText(path));
  bool exists = false;
  backend->Look([&](RegistryNode&) { exists = true; });
  if (!exists) return std::nullopt;
  return RegistryHandle(std::move(backend));
}

std::optional<RegistryHandle> CreateKey(Hive hive, const std::string& path) {
  if (!IsRelative(path)) return std::nullopt;
  auto backend = std::make_unique<RegistryHandle::Backend>();
  backend->hive = Machine::Current().Internals().HiveOf(hive);
  backend->path = Widen(AsText(path));
  bool created = backend->hive->Change([&](RegistryNode& root) {
    if (root.Find(backend->path) != nullptr) return HiveChange::Nothing;
    return root.Create(backend->path) != nullptr ? HiveChange::Made : HiveChange::Failed;
  });
  if (!created) return std::nullopt;
  return RegistryHandle(std::move(backend));
}

}  // namespace quillmar::platform
