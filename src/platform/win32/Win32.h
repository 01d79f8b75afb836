// What the files of this backend share: the system's header and the conversions of handles.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstdint>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform::win32 {

inline HWND ToHandle(QmWindow window) {
  return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window));
}

// The owner of a dialog. A number that is no window would keep the dialog from being shown at all.
inline HWND ToOwner(QmWindow window) {
  const HWND handle = ToHandle(window);
  return IsWindow(handle) ? handle : nullptr;
}

inline QmWindow ToWindow(HWND handle) {
  return static_cast<QmWindow>(reinterpret_cast<std::uintptr_t>(handle));
}

// True for a path that names its drive and its place on it, or a server. Anything else would be
// completed with the current folder, which belongs to the host.
bool IsFullPath(const std::string& path);

// Asks a system function for a text of unknown length: `ask(buffer, size)` answers the length of
// the text, or at least `size` when the buffer is too small, or 0 for a failure.
template <class Ask>
std::string GrowingText(Ask ask) {
  std::string text(MAX_PATH, '\0');
  for (;;) {
    const auto size = static_cast<DWORD>(text.size());
    const DWORD length = ask(text.data(), size);
    if (length < size) {
      text.resize(length);
      return text;
    }
    text.resize(text.size() * 2);
  }
}

}  // namespace quillmar::platform::win32
