#include "platform/Registry.h"

#include <algorithm>
#include <utility>

#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

constexpr DWORD kKeyNameSize = 512;          // 255 characters of at most two bytes, and a NUL
constexpr DWORD kValueNameSize = 2 * 16384;  // 16383 characters, likewise
constexpr DWORD kFirstDataSize = 2048;

HKEY RootOf(Hive hive) {
  return hive == Hive::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

// Readers of texts count on the NUL that the system's own tools store too.
bool LacksTerminator(RegistryType type, const std::string& data) {
  return (type == RegistryType::Text || type == RegistryType::ExpandableText) &&
         !data.ends_with('\0');
}

// Reads data of unknown length: `read(buffer, size)` sets the size that is needed and tells
// whether the buffer was too small by ERROR_MORE_DATA. Nothing for any other failure.
template <class Read>
std::optional<std::string> ReadData(Read read) {
  std::string data(kFirstDataSize, '\0');
  for (;;) {
    auto size = static_cast<DWORD>(data.size());
    const LSTATUS status = read(reinterpret_cast<BYTE*>(data.data()), &size);
    if (status == ERROR_SUCCESS) {
      data.resize(size);
      return data;
    }
    if (status != ERROR_MORE_DATA) return std::nullopt;
    data.resize(std::max<std::size_t>(size, data.size() * 2));
  }
}

}  // namespace

// The key is opened for reading and, by the first write, opened again for writing: most users may
// only read the machine's hive.
struct RegistryHandle::Backend {
  explicit Backend(HKEY opened, bool mayWrite) : key(opened), writable(mayWrite) {}
  ~Backend() { RegCloseKey(key); }
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;

  bool PrepareWriting() {
    HKEY reopened = nullptr;
    if (writable) return true;
    if (RegOpenKeyExA(key, "", 0, KEY_READ | KEY_WRITE, &reopened) != ERROR_SUCCESS) return false;
    RegCloseKey(std::exchange(key, reopened));
    writable = true;
    return true;
  }

  HKEY key;
  bool writable;
};

RegistryHandle::RegistryHandle(std::unique_ptr<Backend> opened) : backend(std::move(opened)) {}
RegistryHandle::RegistryHandle(RegistryHandle&&) noexcept = default;
RegistryHandle& RegistryHandle::operator=(RegistryHandle&&) noexcept = default;
RegistryHandle::~RegistryHandle() = default;

std::optional<RegistryValue> RegistryHandle::Query(const std::string& name) const {
  DWORD type = 0;
  auto data = ReadData([&](BYTE* buffer, DWORD* size) {
    return RegQueryValueExA(backend->key, name.c_str(), nullptr, &type, buffer, size);
  });
  if (!data) return std::nullopt;
  return RegistryValue{static_cast<RegistryType>(type), std::move(*data)};
}

bool RegistryHandle::Set(const std::string& name, RegistryType type, const std::string& data) {
  const std::size_t size = data.size() + (LacksTerminator(type, data) ? 1 : 0);
  return backend->PrepareWriting() &&
         RegSetValueExA(backend->key, name.c_str(), 0, static_cast<DWORD>(type),
                        reinterpret_cast<const BYTE*>(data.c_str()),
                        static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

bool RegistryHandle::DeleteValue(const std::string& name) {
  return backend->PrepareWriting() && RegDeleteValueA(backend->key, name.c_str()) == ERROR_SUCCESS;
}

bool RegistryHandle::DeleteSubKey(const std::string& name) {
  return !name.empty() && RegDeleteKeyA(backend->key, name.c_str()) == ERROR_SUCCESS;
}

std::optional<std::string> RegistryHandle::SubKeyAt(std::uint32_t index) const {
  char name[kKeyNameSize];
  DWORD length = kKeyNameSize;
  if (RegEnumKeyExA(backend->key, index, name, &length, nullptr, nullptr, nullptr, nullptr) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  return std::string(name, length);
}

std::optional<NamedRegistryValue> RegistryHandle::ValueAt(std::uint32_t index) const {
  std::string name(kValueNameSize, '\0');
  DWORD length = 0;
  DWORD type = 0;
  auto data = ReadData([&](BYTE* buffer, DWORD* size) {
    length = kValueNameSize;
    return RegEnumValueA(backend->key, index, name.data(), &length, nullptr, &type, buffer, size);
  });
  if (!data) return std::nullopt;
  name.resize(length);
  return NamedRegistryValue{std::move(name), {static_cast<RegistryType>(type), std::move(*data)}};
}

// The changes are the system's at once.
struct RegistryBatch::Backend {};

RegistryBatch::RegistryBatch(Hive) {}
RegistryBatch::~RegistryBatch() = default;
bool RegistryBatch::Commit() { return true; }

std::optional<RegistryHandle> OpenKey(Hive hive, const std::string& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(RootOf(hive), path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return RegistryHandle(std::make_unique<RegistryHandle::Backend>(key, false));
}

std::optional<RegistryHandle> CreateKey(Hive hive, const std::string& path) {
  HKEY key = nullptr;
  if (RegCreateKeyExA(RootOf(hive), path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                      KEY_READ | KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return RegistryHandle(std::make_unique<RegistryHandle::Backend>(key, true));
}

}  // namespace quillmar::platform
