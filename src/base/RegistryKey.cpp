#include "base/RegistryKey.h"

#include <cstring>

namespace quillmar {
namespace {

using platform::Hive;
using platform::RegistryType;

constexpr std::size_t kLongestText = 2047;
constexpr std::size_t kLongestName = 2046;

std::string WithoutLeadingBackslash(const std::string& path) {
  return !path.empty() && path.front() == '\\' ? path.substr(1) : path;
}

void EmptyKey(platform::RegistryHandle& key, Hive root, const std::string& path) {
  while (const auto value = key.ValueAt(0)) {
    if (!key.DeleteValue(value->name)) break;
  }
  while (const auto name = key.SubKeyAt(0)) {
    const std::string below = path + "\\" + *name;
    if (auto subKey = platform::OpenKey(root, below)) EmptyKey(*subKey, root, below);
    if (!key.DeleteSubKey(*name)) break;
  }
}

}  // namespace

bool RegistryKey::Open(Hive hive, const std::string& keyPath) {
  Close();
  handle = platform::OpenKey(hive, WithoutLeadingBackslash(keyPath));
  if (!handle) return false;
  root = hive;
  path = WithoutLeadingBackslash(keyPath);
  return true;
}

bool RegistryKey::Create(Hive hive, const std::string& keyPath) {
  Close();
  handle = platform::CreateKey(hive, WithoutLeadingBackslash(keyPath));
  if (!handle) return false;
  root = hive;
  path = WithoutLeadingBackslash(keyPath);
  return true;
}

bool RegistryKey::Close() {
  handle.reset();
  root = Hive::CurrentUser;
  path.clear();
  return true;
}

bool RegistryKey::HasValue(const std::string& name) const {
  return handle && handle->Query(name).has_value();
}

std::optional<std::string> RegistryKey::QueryValue(const std::string& name,
                                                   RegistryType type) const {
  if (!handle) return std::nullopt;
  auto value = handle->Query(name);
  if (!value || value->type != type) return std::nullopt;
  return std::move(value->data);
}

bool RegistryKey::SetValue(const std::string& name, RegistryType type, const std::string& data) {
  return handle && handle->Set(name, type, data);
}

std::string RegistryKey::ReadString(const std::string& name) const {
  std::string text;
  ReadString(name, text);
  return text;
}

bool RegistryKey::ReadString(const std::string& name, std::string& out) const {
  const auto data = QueryValue(name, RegistryType::Text);
  if (!data || data->size() > kLongestText) {
    out.clear();
    return false;
  }
  out.assign(data->c_str());  // up to the first NUL, wherever the writer put one
  return true;
}

bool RegistryKey::WriteString(const std::string& name, const std::string& text) {
  return SetValue(name, RegistryType::Text, text);
}

std::uint32_t RegistryKey::ReadDword(const std::string& name) const {
  std::uint32_t value = 0;
  ReadDword(name, value);
  return value;
}

bool RegistryKey::ReadDword(const std::string& name, std::uint32_t& out) const {
  const auto data = QueryValue(name, RegistryType::Dword);
  if (!data || data->size() > sizeof out) return false;
  std::uint32_t value = 0;
  std::memcpy(&value, data->data(), data->size());
  out = value;
  return true;
}

bool RegistryKey::WriteDword(const std::string& name, std::uint32_t value) {
  return SetValue(name, RegistryType::Dword,
                  std::string(reinterpret_cast<const char*>(&value), sizeof value));
}

bool RegistryKey::DeleteValue(const std::string& name) {
  return handle && handle->DeleteValue(name);
}

bool RegistryKey::DeleteKey() {
  if (!handle) return false;
  EmptyKey(*handle, root, path);
  handle->DeleteValue("");
  return !handle->ValueAt(0) && !handle->SubKeyAt(0);
}

std::optional<std::string> RegistryKey::EnumKey(std::uint32_t index) const {
  auto name = handle ? handle->SubKeyAt(index) : std::nullopt;
  return name && name->size() <= kLongestName ? name : std::nullopt;
}

std::optional<platform::NamedRegistryValue> RegistryKey::EnumValue(std::uint32_t index) const {
  auto value = handle ? handle->ValueAt(index) : std::nullopt;
  return value && value->name.size() <= kLongestName ? std::move(value) : std::nullopt;
}

bool RegistryKey::ReadStringUserThenMachine(const std::string& path, const std::string& name,
                                            std::string& out) {
  RegistryKey key;
  if (key.Open(Hive::CurrentUser, path) && key.ReadString(name, out)) return true;
  return key.Open(Hive::LocalMachine, path) && key.ReadString(name, out);
}

bool RegistryKey::ReadDwordUserThenMachine(const std::string& path, const std::string& name,
                                           std::uint32_t& out) {
  RegistryKey key;
  if (key.Open(Hive::CurrentUser, path) && key.ReadDword(name, out)) return true;
  return key.Open(Hive::LocalMachine, path) && key.ReadDword(name, out);
}

bool RegistryKey::ReadFlagUserThenMachine(const std::string& path, const std::string& name,
                                          bool& out) {
  std::uint32_t value = 0;
  if (!ReadDwordUserThenMachine(path, name, value)) return false;
  out = static_cast<std::int32_t>(value) > 0;
  return true;
}

}  // namespace quillmar
