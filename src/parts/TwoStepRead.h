// How a text is read from the CAD: into a buffer of usual size first, into one of the size it asks
// for when that was too small.
#pragma once

#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace quillmar {

enum class ReadResult {
  Done,
  FailedAtOnce,  // nothing to be had
  FailedAgain    // the CAD asked for a larger buffer and failed with that one too
};

// One call `call(buffer, &size)` with room for `size` characters and a NUL. The driver sets `size`
// to the length it needs when the text does not fit; nothing it may have written then counts.
template <class DriverCall>
bool ReadOnce(const DriverCall& call, int& size, std::string& text) {
  const auto room = static_cast<std::size_t>(size);
  const std::unique_ptr<char[]> buffer(new (std::nothrow) char[room + 1]);
  if (buffer == nullptr) return false;
  buffer[0] = '\0';
  if (call(buffer.get(), &size) == 0) return false;
  text.assign(buffer.get(), ::strnlen(buffer.get(), room));
  return true;
}

// `text` is empty unless the result is Done.
template <class DriverCall>
ReadResult ReadInTwoSteps(const DriverCall& call, int usualSize, std::string& text) {
  text.clear();
  int size = usualSize;
  if (ReadOnce(call, size, text)) return ReadResult::Done;
  if (size <= 0) return ReadResult::FailedAtOnce;
  return ReadOnce(call, size, text) ? ReadResult::Done : ReadResult::FailedAgain;
}

}  // namespace quillmar
