// The machine's registry: two hives of keys with typed values. Keys and value names match
// without regard to case.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillmar::platform {

enum class Hive { CurrentUser, LocalMachine };

// Kinds of values; the numbers are those of the Windows registry. Other numbers pass through.
enum class RegistryType : std::uint32_t {
  None = 0,
  Text = 1,
  ExpandableText = 2,
  Binary = 3,
  Dword = 4
};

// One value as stored. Its bytes are not interpreted, but a text that was stored without a NUL at
// its end has been given one, as the system does. Texts from elsewhere may lack it.
struct RegistryValue {
  RegistryType type = RegistryType::None;
  std::string data;
};

struct NamedRegistryValue {
  std::string name;
  RegistryValue value;
};

// An open key; closes itself. Made by OpenKey and CreateKey, so it is always open unless moved
// from.
class RegistryHandle {
 public:
  struct Backend;  // the backend's own representation
  explicit RegistryHandle(std::unique_ptr<Backend> opened);
  RegistryHandle(RegistryHandle&&) noexcept;
  RegistryHandle& operator=(RegistryHandle&&) noexcept;
  ~RegistryHandle();

  std::optional<RegistryValue> Query(const std::string& name) const;
  bool Set(const std::string& name, RegistryType type, const std::string& data);
  bool DeleteValue(const std::string& name);
  // Deletes the sub-key of that name; it must not have sub-keys of its own.
  bool DeleteSubKey(const std::string& name);
  // Enumeration by index from 0; nothing past the last one.
  std::optional<std::string> SubKeyAt(std::uint32_t index) const;
  std::optional<NamedRegistryValue> ValueAt(std::uint32_t index) const;

 private:
  std::unique_ptr<Backend> backend;
};

// Changes of one hive by this thread that belong together. A machine whose hive is one file writes
// all of them at Commit, or none; the registry of Windows takes each change as it is made. Other
// threads wait for the end of it.
class RegistryBatch {
 public:
  explicit RegistryBatch(Hive hive);
  // Without Commit the hive is as it was, where the machine can do that.
  ~RegistryBatch();
  RegistryBatch(const RegistryBatch&) = delete;
  RegistryBatch& operator=(const RegistryBatch&) = delete;

  bool Commit();

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};

// `path` is relative to the hive, without a leading backslash.
std::optional<RegistryHandle> OpenKey(Hive hive, const std::string& path);
std::optional<RegistryHandle> CreateKey(Hive hive, const std::string& path);

}  // namespace quillmar::platform
