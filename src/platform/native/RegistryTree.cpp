#include "platform/native/RegistryTree.h"

#include <utility>

#include "platform/native/CodePage.h"

namespace quillmar::platform {
namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kDeepestKey = 512;

// Takes the first name off the front of `path`; empty when there is none left.
std::u16string_view TakeName(std::u16string_view& path) {
  while (!path.empty() && path.front() == u'\\') path.remove_prefix(1);
  std::u16string_view name = path.substr(0, path.find(u'\\'));
  path.remove_prefix(name.size());
  return name;
}

// A line end in a key's name could not be written to the file.
bool IsAllowedName(std::u16string_view name) {
  return name.size() <= kLongestKeyName && name.find_first_of(u"\r\n") == std::u16string_view::npos;
}

}  // namespace

RegistryNode* RegistryNode::Find(std::u16string_view path) {
  RegistryNode* node = this;
  for (std::u16string_view part = TakeName(path); !part.empty(); part = TakeName(path)) {
    auto child = node->children.find(Fold(part));
    if (child == node->children.end()) return nullptr;
    node = &child->second;
  }
  return node;
}

RegistryNode* RegistryNode::Create(std::u16string_view path) {
  std::u16string_view check = path;
  std::size_t depth = 0;
  for (std::u16string_view part = TakeName(check); !part.empty(); part = TakeName(check)) {
    if (!IsAllowedName(part) || ++depth > kDeepestKey) return nullptr;
  }
  RegistryNode* node = this;
  for (std::u16string_view part = TakeName(path); !part.empty(); part = TakeName(path)) {
    RegistryNode& child = node->children[Fold(part)];
    if (child.name.empty()) child.name = part;
    node = &child;
  }
  return node;
}

void RegistryNode::Erase(std::u16string_view path) {
  std::u16string_view name = TakeName(path);
  auto child = children.find(Fold(name));
  if (child == children.end()) return;
  if (path.find_first_not_of(u'\\') == std::u16string_view::npos) {
    children.erase(child);
  } else {
    child->second.Erase(path);
  }
}

void RegistryNode::Set(StoredValue value) {
  StoredValue& stored = values[Fold(value.name)];
  if (!stored.name.empty()) value.name = stored.name;
  stored = std::move(value);
}

bool IsTextType(std::uint32_t type) {
  return type == kRegistryText || type == kRegistryExpandableText || type == kRegistryTextList;
}

std::u16string TextOfBytes(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                  (static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return text;
}

std::string BytesOfText(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

}  // namespace quillmar::platform
