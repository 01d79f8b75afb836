// The machine on which a contract test runs: places of the installation, registry and files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/Registry.h"

namespace quillmar::contract {

inline const std::string kModuleFolder = "C:\\Vantorel\\Quillmar";
inline const std::string kSuiteFolder = "C:\\Vantorel\\Fendrake";
inline const std::string kCadFolder = "C:\\Strictcad";

// The module's key in both hives; the options are kept under it too until an application says
// where its own are.
inline const std::string kModuleKey =
    "Software\\Kestrova\\Vantorel\\RegistryVersion11.0\\Brastolinex";

using platform::Hive;

void SetText(Hive hive, const std::string& key, const std::string& name, const std::string& text);
void SetNumber(Hive hive, const std::string& key, const std::string& name, std::uint32_t number);
void RemoveValue(Hive hive, const std::string& key, const std::string& name);
// Removes all values of a key; what stands below it stays.
void ClearKey(Hive hive, const std::string& key);

// Nothing when the value is missing or of another type.
std::optional<std::string> TextValue(Hive hive, const std::string& key, const std::string& name);
std::optional<std::uint32_t> NumberValue(Hive hive, const std::string& key,
                                         const std::string& name);
bool KeyExists(Hive hive, const std::string& key);
// Removes a key that has no keys below it.
void RemoveKey(Hive hive, const std::string& parent, const std::string& name);

// The path under which this program's own file functions find a file of the machine.
std::filesystem::path OwnPath(const std::string& windowsPath);

// Lets a wait that is under way run out where the clock can be set.
extern const bool kClockCanBeSet;
// The host is a process of its own: its calls are seen here only through a HostJournal.
extern const bool kHostIsAProcess;
void EndWait();

// Moves a file to another place of the same drive, making the folder when it is missing.
bool MoveFileTo(const std::string& from, const std::string& folder, const std::string& name);

}  // namespace quillmar::contract
