// What the store needs of the operating system beyond the platform layer. One backend a target.
#pragma once

#include <cstdint>
#include <string>

namespace quillmar::keelcomm {

// A process for as long as it lives: the system uses its number again afterwards, with another time
// of birth.
struct ProcessIdentity {
  std::int64_t number = 0;
  std::int64_t birth = 0;
};

ProcessIdentity ThisProcess();
bool IsAlive(const ProcessIdentity& process);

// The file of a Windows path, in the form in which SQLite takes names (UTF-8).
std::string DatabaseName(const std::string& windowsPath);

}  // namespace quillmar::keelcomm
