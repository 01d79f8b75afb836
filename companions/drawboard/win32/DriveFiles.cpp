#include "drawboard/DriveFiles.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

namespace drawboard {
namespace {

bool IsFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool MakeFolderOf(const std::string& path) {
  const auto cut = path.find_last_of("\\/");
  return cut == std::string::npos || MakeFolder(path.substr(0, cut));
}

// Calls `visit` with the find data of everything in a folder but itself and its parent.
template <typename Visit>
void VisitFolder(const std::string& folder, Visit visit) {
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::string name = found.cFileName;
    if (name != "." && name != "..") visit(found);
  } while (FindNextFileA(search, &found));
  FindClose(search);
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
  if (IsFolder(path)) return std::nullopt;
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return std::nullopt;
  std::string contents;
  char block[16384];
  for (std::size_t got; (got = std::fread(block, 1, sizeof block, file)) > 0;) {
    contents.append(block, got);
  }
  const bool whole = std::ferror(file) == 0;
  std::fclose(file);
  if (!whole) return std::nullopt;
  return contents;
}

bool WriteWholeFile(const std::string& path, std::string_view contents) {
  if (!MakeFolderOf(path)) return false;
  const std::string fresh = path + ".new";
  std::FILE* file = std::fopen(fresh.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
  const bool closed = std::fclose(file) == 0;
  if (written && closed && MoveFileExA(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
    return true;
  }
  DeleteFileA(fresh.c_str());
  return false;
}

bool RelocateFile(const std::string& from, const std::string& to) {
  return MakeFolderOf(to) && MoveFileA(from.c_str(), to.c_str()) != 0;
}

bool EraseFolder(const std::string& path) {
  if (!IsFolder(path)) return true;
  VisitFolder(path, [&](const WIN32_FIND_DATAA& found) {
    const std::string inner = path + "\\" + found.cFileName;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      EraseFolder(inner);
    } else {
      DeleteFileA(inner.c_str());
    }
  });
  return RemoveDirectoryA(path.c_str()) != 0;
}

bool MakeFolder(const std::string& path) {
  if (path.empty() || IsFolder(path)) return true;
  return MakeFolderOf(path) && (CreateDirectoryA(path.c_str(), nullptr) != 0 || IsFolder(path));
}

std::vector<std::string> FilesOf(const std::string& folder) {
  std::vector<std::string> names;
  VisitFolder(folder, [&](const WIN32_FIND_DATAA& found) {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.push_back(found.cFileName);
  });
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace drawboard
