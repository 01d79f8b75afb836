#include "Machine.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <vector>

namespace quillmar::contract {

using platform::RegistryType;

void SetText(Hive hive, const std::string& key, const std::string& name, const std::string& text) {
  auto opened = platform::CreateKey(hive, key);
  ASSERT_TRUE(opened.has_value()) << key;
  // With its NUL, as most programs store a text.
  ASSERT_TRUE(opened->Set(name, RegistryType::Text, std::string(text.c_str(), text.size() + 1)));
}

void SetNumber(Hive hive, const std::string& key, const std::string& name, std::uint32_t number) {
  auto opened = platform::CreateKey(hive, key);
  ASSERT_TRUE(opened.has_value()) << key;
  std::string bytes(sizeof number, '\0');
  std::memcpy(bytes.data(), &number, sizeof number);
  ASSERT_TRUE(opened->Set(name, RegistryType::Dword, bytes));
}

void RemoveValue(Hive hive, const std::string& key, const std::string& name) {
  if (auto opened = platform::OpenKey(hive, key)) opened->DeleteValue(name);
}

void ClearKey(Hive hive, const std::string& key) {
  auto opened = platform::OpenKey(hive, key);
  if (!opened) return;
  std::vector<std::string> names;
  for (std::uint32_t i = 0; auto value = opened->ValueAt(i); ++i) names.push_back(value->name);
  for (const std::string& name : names) opened->DeleteValue(name);
}

std::optional<std::string> TextValue(Hive hive, const std::string& key, const std::string& name) {
  const auto opened = platform::OpenKey(hive, key);
  const auto value = opened ? opened->Query(name) : std::nullopt;
  if (!value || value->type != RegistryType::Text) return std::nullopt;
  return std::string(value->data.c_str());
}

std::optional<std::uint32_t> NumberValue(Hive hive, const std::string& key,
                                         const std::string& name) {
  const auto opened = platform::OpenKey(hive, key);
  const auto value = opened ? opened->Query(name) : std::nullopt;
  std::uint32_t number = 0;
  if (!value || value->type != RegistryType::Dword || value->data.size() != sizeof number) {
    return std::nullopt;
  }
  std::memcpy(&number, value->data.data(), sizeof number);
  return number;
}

bool KeyExists(Hive hive, const std::string& key) {
  return platform::OpenKey(hive, key).has_value();
}

void RemoveKey(Hive hive, const std::string& parent, const std::string& name) {
  if (auto opened = platform::OpenKey(hive, parent)) opened->DeleteSubKey(name);
}

bool MoveFileTo(const std::string& from, const std::string& folder, const std::string& name) {
  std::error_code failed;
  std::filesystem::create_directories(OwnPath(folder), failed);
  std::filesystem::rename(OwnPath(from), OwnPath(folder) / name, failed);
  return !failed;
}

}  // namespace quillmar::contract
