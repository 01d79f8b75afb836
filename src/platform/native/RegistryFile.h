// The text form of a hive: a registry file as the Windows registry editor writes and reads it.
//
// Read: "Windows Registry Editor Version 5.00" and "REGEDIT4" files, in UTF-16 or UTF-8 with a
// byte order mark, else in the code page; texts, dword:, hex:, hex(n): with continued lines, the
// default value "@", deletions of keys and values. In files of version 4, and only there, the
// bytes of hex texts are characters of the code page.
//
// Written: a REGEDIT4 file in the code page when all its characters fit, else a version 5 file in
// UTF-16 with a byte order mark. Both can be imported on Windows as they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/native/RegistryTree.h"

namespace quillmar::platform {

struct RegistryDocument {
  RegistryNode root;
  // Lines that belong to no key of this hive (comments at the top, keys of other hives): kept, and
  // written first.
  std::vector<std::u16string> otherLines;
  // Numbers, from 1, of lines that were not understood. They are kept as comments.
  std::vector<std::size_t> damagedLines;
};

// `hive` is the name of the root key, for example "HKEY_CURRENT_USER". Damaged lines do not stop
// the reading of the others.
RegistryDocument ParseRegistryFile(std::string_view bytes, std::u16string_view hive);

std::string FormatRegistryFile(const RegistryDocument& document, std::u16string_view hive);

// First lines of registry files.
inline constexpr std::u16string_view kRegistryVersion5 = u"Windows Registry Editor Version 5.00";
inline constexpr std::u16string_view kRegistryVersion4 = u"REGEDIT4";

}  // namespace quillmar::platform
