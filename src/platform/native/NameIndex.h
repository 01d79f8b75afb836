// Finds the first of many names by its text, without regard to the case of ASCII letters. One flat
// table of numbers for all names, because a profile file may have tens of thousands of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace quillmar::platform {

class NameIndex {
 public:
  // `nameOf(number)` gives the names numbered from 0 to `count` - 1; it must give the same ones to
  // Find. The first of equal names is the one that is found.
  template <class NameOf>
  void Build(std::size_t count, NameOf nameOf) {
    std::size_t size = 8;
    while (size < count * 2) size *= 2;
    slots.assign(size, Slot());
    for (std::size_t number = 0; number < count; ++number) {
      const std::u16string_view name = nameOf(number);
      const std::uint32_t hash = Hash(name);
      Slot& slot = slots[PlaceOf(name, hash, nameOf)];
      if (slot.number == kFree) slot = {static_cast<std::uint32_t>(number), hash};
    }
  }

  static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

  // Number of the name, or kNone.
  template <class NameOf>
  std::size_t Find(std::u16string_view name, NameOf nameOf) const {
    if (slots.empty()) return kNone;
    const std::uint32_t number = slots[PlaceOf(name, Hash(name), nameOf)].number;
    return number == kFree ? kNone : number;
  }

 private:
  static constexpr std::uint32_t kFree = std::numeric_limits<std::uint32_t>::max();

  struct Slot {
    std::uint32_t number = kFree;
    std::uint32_t hash = 0;  // so that the texts of other names, which lie anywhere, stay untouched
  };

  // Letters outside ASCII do not match their capitals here: so it is with the system's functions.
  static char16_t Fold(char16_t character) {
    return character >= u'A' && character <= u'Z' ? character + (u'a' - u'A') : character;
  }

  static bool Equal(std::u16string_view left, std::u16string_view right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
      if (Fold(left[i]) != Fold(right[i])) return false;
    }
    return true;
  }

  static std::uint32_t Hash(std::u16string_view name) {
    std::uint64_t hash = 14695981039346656037u;
    for (const char16_t character : name) hash = (hash ^ Fold(character)) * 1099511628211u;
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
  }

  // Where the name stands, or the free slot where it would be put.
  template <class NameOf>
  std::size_t PlaceOf(std::u16string_view name, std::uint32_t hash, NameOf nameOf) const {
    const auto isOther = [&](const Slot& slot) {
      return slot.number != kFree && (slot.hash != hash || !Equal(nameOf(slot.number), name));
    };
    std::size_t place = hash & (slots.size() - 1);
    while (isOther(slots[place])) place = (place + 1) & (slots.size() - 1);
    return place;
  }

  std::vector<Slot> slots;  // a power of two of them; at most half are taken
};

}  // namespace quillmar::platform
