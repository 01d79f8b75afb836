// The array of name and value pairs that the CAD stores with a part. The CAD sees it as a plain C
// array of C strings, each allocated on its own with malloc.
#pragma once

#include <string_view>

#include "quillmar/Conventions.h"

namespace quillmar {

// Frees the texts and the array. A null array is nothing to free.
void FreeExtDataPairs(ExtDataPair* pairs, int count);

// Owns one array; empty at first.
class ExtDataPairs {
 public:
  ExtDataPairs() = default;
  ExtDataPairs(ExtDataPairs&& other) noexcept;
  ExtDataPairs& operator=(ExtDataPairs&& other) noexcept;
  ~ExtDataPairs() { FreeExtDataPairs(pairs, count); }

  // Makes room for `capacity` pairs at once.
  void Reserve(int capacity);
  // Throws std::bad_alloc, with the array as it was, when there is no memory.
  void Append(std::string_view name, std::string_view value);

  // Null when empty.
  const ExtDataPair* Get() const { return pairs; }
  int Count() const { return count; }
  // Hands the array over; who gets it frees it with FreeExtDataPairs.
  ExtDataPair* Release();

 private:
  ExtDataPair* pairs = nullptr;
  int count = 0;
  int capacity = 0;
};

}  // namespace quillmar
