#include "bom/ExtDataPairs.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace quillmar {
namespace {

struct Freed {
  void operator()(char* text) const { std::free(text); }
};
using CText = std::unique_ptr<char, Freed>;

CText DuplicateText(std::string_view text) {
  CText copy(static_cast<char*>(std::malloc(text.size() + 1)));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy.get(), text.data(), text.size());
  copy.get()[text.size()] = '\0';
  return copy;
}

}  // namespace

void FreeExtDataPairs(ExtDataPair* pairs, int count) {
  if (pairs == nullptr) return;
  for (int i = 0; i < count; ++i) {
    std::free(pairs[i].name);
    std::free(pairs[i].value);
  }
  std::free(pairs);
}

ExtDataPairs::ExtDataPairs(ExtDataPairs&& other) noexcept { *this = std::move(other); }

ExtDataPairs& ExtDataPairs::operator=(ExtDataPairs&& other) noexcept {
  std::swap(pairs, other.pairs);
  std::swap(count, other.count);
  std::swap(capacity, other.capacity);
  return *this;
}

void ExtDataPairs::Reserve(int wanted) {
  if (wanted <= capacity) return;
  void* grown = std::realloc(pairs, static_cast<std::size_t>(wanted) * sizeof(ExtDataPair));
  if (grown == nullptr) throw std::bad_alloc();
  pairs = static_cast<ExtDataPair*>(grown);
  capacity = wanted;
}

void ExtDataPairs::Append(std::string_view name, std::string_view value) {
  if (count == capacity) Reserve(std::max(8, 2 * capacity));
  CText nameCopy = DuplicateText(name);
  CText valueCopy = DuplicateText(value);
  pairs[count++] = {nameCopy.release(), valueCopy.release()};
}

ExtDataPair* ExtDataPairs::Release() {
  count = 0;
  capacity = 0;
  return std::exchange(pairs, nullptr);
}

}  // namespace quillmar
