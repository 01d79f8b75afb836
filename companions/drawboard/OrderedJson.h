// JSON whose objects keep the order of their keys, for documents.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <unordered_map>
#include <utility>

namespace drawboard {

// The ordered map of nlohmann::ordered_json, with an index: that map looks for each key that is
// read among all keys before it, which takes seconds for the 30,000 parameters of a fine cam.
template <class Key, class Value, class Less = std::less<Key>,
          class Allocator = std::allocator<std::pair<const Key, Value>>>
class IndexedMap : public nlohmann::ordered_map<Key, Value, Less, Allocator> {
  using Base = nlohmann::ordered_map<Key, Value, Less, Allocator>;

 public:
  using Base::Base;
  using Base::operator[];

  // The parser hands over its key as one that may be changed.
  Value& operator[](Key& key) { return (*this)[std::as_const(key)]; }
  Value& operator[](const Key& key) {
    if (this->size() < kWorthAnIndex) return Base::operator[](key);
    CatchUp();
    const auto [place, fresh] = places.try_emplace(key, this->size());
    if (fresh) {
      this->emplace_back(key, Value{});
      ++indexed;
    }
    return Base::Container::operator[](place->second).second;
  }

  template <class... Where>
  auto erase(Where&&... where) {
    Forget();
    return Base::erase(std::forward<Where>(where)...);
  }

  void clear() {
    Forget();
    Base::clear();
  }

 private:
  static constexpr std::size_t kWorthAnIndex = 32;

  // Takes in what came by other ways, always at the end.
  void CatchUp() {
    for (; indexed < this->size(); ++indexed) {
      places.try_emplace(Base::Container::operator[](indexed).first, indexed);
    }
  }

  void Forget() {
    places.clear();
    indexed = 0;
  }

  std::unordered_map<Key, std::size_t> places;
  std::size_t indexed = 0;
};

using OrderedJson = nlohmann::basic_json<IndexedMap>;

}  // namespace drawboard
