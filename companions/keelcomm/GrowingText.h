// Text outputs of the storage and link libraries: the caller passes as many blanks as fit.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

namespace quillmar::keelcomm {

// Writes as much of `text` as the blanks in `buffer` make room for, and a NUL. The caller sees from
// the length that it may have been cut, and asks again with more room. False without a buffer.
inline bool WriteGrowing(char* buffer, std::string_view text) {
  if (buffer == nullptr) return false;
  const std::size_t length = std::min(std::strlen(buffer), text.size());
  text.copy(buffer, length);
  buffer[length] = '\0';
  return true;
}

}  // namespace quillmar::keelcomm
