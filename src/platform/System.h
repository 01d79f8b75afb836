// Clock, identity, well-known folders, code-page casing and debugger output of the machine.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillmar::platform {

// Milliseconds since the machine started, modulo 2^32. Two readings in a loop that waits for a
// change differ in the end, also on a machine whose clock was set by hand.
std::uint32_t TickCount();

// Serial number of the volume of a drive, for example "c:\"; 0 when it cannot be read.
std::uint32_t VolumeSerial(const std::string& drive);

// Folders without a trailing backslash; empty when unknown.
std::string TempFolder();
std::string DocumentsFolder();
std::string WindowsFolder();

// A new, empty file "<folder>\<prefix><unique>.<extension>"; its path, empty on failure.
std::string MakeTempFile(const std::string& folder, const std::string& prefix,
                         const std::string& extension);

// Casing and comparison by the system code page.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool EqualsNoCase(std::string_view left, std::string_view right);

// One line to an attached debugger.
void DebugOutput(const std::string& text);

}  // namespace quillmar::platform
