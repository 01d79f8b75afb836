#include "drawboard/Document.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "drawboard/Folders.h"
#include "platform/System.h"

namespace drawboard {
namespace {

using quillmar::platform::EqualsNoCase;

constexpr const char* kKindWords[] = {"part",    "parametric part", "shaft",    "feature",
                                      "cam",     "calculation",     "assembly", "named protocol",
                                      "drawing", "symbol",          "format"};

// Names travel in buffers of 1024 characters; this leaves room for a number.
constexpr std::size_t kLongestName = 1000;

bool BoreIdentifier(const BoardObject& object, const std::string& id) {
  return std::find(object.formerIds.begin(), object.formerIds.end(), id) != object.formerIds.end();
}

}  // namespace

const char* KindWord(Kind kind) { return kKindWords[static_cast<std::size_t>(kind)]; }

std::optional<Kind> KindFromWord(const std::string& word) {
  const auto found = std::find(std::begin(kKindWords), std::end(kKindWords), word);
  if (found == std::end(kKindWords)) return std::nullopt;
  return static_cast<Kind>(found - std::begin(kKindWords));
}

std::string Document::Name() const { return StemOf(path); }

const BoardObject* Document::Find(const std::string& key) const {
  const auto newest = [&](auto matches) -> const BoardObject* {
    const auto found = std::find_if(objects.rbegin(), objects.rend(), matches);
    return found != objects.rend() ? &*found : nullptr;
  };
  if (key.empty()) return nullptr;
  if (auto* object = newest([&](const BoardObject& o) { return o.protocolId == key; })) {
    return object;
  }
  if (auto* object = newest([&](const BoardObject& o) { return EqualsNoCase(o.name, key); })) {
    return object;
  }
  return newest([&](const BoardObject& o) { return BoreIdentifier(o, key); });
}

BoardObject* Document::Find(const std::string& key) {
  return const_cast<BoardObject*>(std::as_const(*this).Find(key));
}

std::vector<BoardObject*> Document::FindAll(const std::string& protocolId) {
  std::vector<BoardObject*> found;
  const auto collect = [&](auto matches) {
    for (BoardObject& object : objects) {
      if (matches(object)) found.push_back(&object);
    }
  };
  if (protocolId.empty()) return found;
  collect([&](const BoardObject& object) { return object.protocolId == protocolId; });
  if (found.empty()) {
    collect([&](const BoardObject& object) { return BoreIdentifier(object, protocolId); });
  }
  return found;
}

BoardObject* Document::FindName(const std::string& name) {
  const auto found = std::find_if(objects.begin(), objects.end(), [&](const BoardObject& object) {
    return EqualsNoCase(object.name, name);
  });
  return found != objects.end() ? &*found : nullptr;
}

const BoardObject* Document::AssemblyObject() const {
  const auto found = std::find_if(objects.begin(), objects.end(), [](const BoardObject& object) {
    return object.kind == Kind::Assembly;
  });
  return found != objects.end() ? &*found : nullptr;
}

std::string Document::FreeName(const std::string& wish) const {
  const std::string stem = wish.substr(0, kLongestName);
  const auto taken = [&](const std::string& name) {
    return std::any_of(objects.begin(), objects.end(),
                       [&](const BoardObject& object) { return EqualsNoCase(object.name, name); });
  };
  std::string name = stem;
  for (int number = 2; taken(name); ++number) name = stem + " (" + std::to_string(number) + ")";
  return name;
}

}  // namespace drawboard
