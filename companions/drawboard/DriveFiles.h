// Whole files of the machine by Windows path. Two backends, chosen by the build.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace drawboard {

// Contents of a file, nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

// Writes a file as a whole: another name first, then a rename over the old one, so that a reader
// finds the old contents or the new ones. Makes missing folders. False leaves the old file.
bool WriteWholeFile(const std::string& path, std::string_view contents);

// Moves a file; fails when there is one of the new name.
bool RelocateFile(const std::string& from, const std::string& to);

// Removes a folder with all that lies in it; true when it is not there afterwards.
bool EraseFolder(const std::string& path);

bool MakeFolder(const std::string& path);

// Names of the files of a folder, sorted.
std::vector<std::string> FilesOf(const std::string& folder);

}  // namespace drawboard
