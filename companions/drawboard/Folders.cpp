#include "drawboard/Folders.h"

#include <algorithm>

#include "drawboard/BoardError.h"
#include "platform/System.h"

namespace drawboard {
namespace {

struct Marker {
  const char* text;
  std::string MarkedFolders::*folder;
};

constexpr Marker kMarkers[] = {
    {"<ASM>", &MarkedFolders::assembly},
    {"<WORKSPACE>", &MarkedFolders::workspace},
    {"<LIB>", &MarkedFolders::library},
    {"<CONTENTLIB>", &MarkedFolders::contentLibrary},
};

bool IsSlash(char character) { return character == '\\' || character == '/'; }

bool HasDrive(const std::string& path) { return path.size() >= 2 && path[1] == ':'; }

// A network path, "\\server\share".
bool IsNetworkPath(const std::string& path) {
  return path.size() >= 2 && IsSlash(path[0]) && IsSlash(path[1]);
}

// The folder in front of the rest of a path that begins with a marker, else empty. `rest` is
// moved behind the marker.
std::string TakeMarker(std::string& rest, const MarkedFolders& folders) {
  for (const Marker& marker : kMarkers) {
    const std::string text = marker.text;
    if (rest.size() <= text.size() || !IsSlash(rest[text.size()])) continue;
    if (!quillmar::platform::EqualsNoCase(rest.substr(0, text.size()), text)) continue;
    rest.erase(0, text.size());
    return folders.*marker.folder;
  }
  return {};
}

void CheckCharacters(const std::string& rest, const std::string& given) {
  const auto forbidden = [](char character) {
    return static_cast<unsigned char>(character) < 0x20 ||
           std::string_view("<>:\"|?*").find(character) != std::string_view::npos;
  };
  if (std::any_of(rest.begin(), rest.end(), forbidden)) {
    throw BoardError("No file can bear the name \"" + given + "\"");
  }
}

// Splits at slashes, drops empty parts, refuses to climb.
std::string CleanParts(const std::string& rest, const std::string& given) {
  std::string clean;
  for (std::size_t at = 0; at < rest.size();) {
    const auto end = std::min(rest.find_first_of("\\/", at), rest.size());
    const std::string part = rest.substr(at, end - at);
    if (part == "..") throw BoardError("The path \"" + given + "\" leaves its folder");
    if (!part.empty() && part != ".") clean += "\\" + part;
    at = end + 1;
  }
  if (clean.empty()) throw BoardError("The path \"" + given + "\" names no file");
  return clean;
}

}  // namespace

std::string FolderOf(const std::string& path) {
  const auto cut = path.find_last_of("\\/");
  return cut == std::string::npos ? std::string() : path.substr(0, cut);
}

std::string StemOf(const std::string& path) {
  const auto cut = path.find_last_of("\\/");
  std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
  return name.substr(0, name.size() - ExtensionOf(name).size());
}

std::string ExtensionOf(const std::string& path) {
  const auto dot = path.find_last_of('.');
  const auto cut = path.find_last_of("\\/");
  if (dot == std::string::npos || (cut != std::string::npos && dot < cut)) return {};
  return path.substr(dot);
}

std::string ResolvePath(const std::string& path, const MarkedFolders& folders) {
  std::string rest = path;
  std::string folder = TakeMarker(rest, folders);
  if (folder.empty() && HasDrive(rest)) {
    folder = rest.substr(0, 2);
    rest.erase(0, 2);
  } else if (folder.empty() && IsNetworkPath(rest)) {
    folder = "\\";
  } else if (folder.empty()) {
    folder = folders.assembly;
  }
  CheckCharacters(rest, path);
  return folder + CleanParts(rest, path);
}

MarkedFolders DefaultFolders(const std::string& documentPath, const std::string& installation) {
  return {FolderOf(documentPath) + "\\" + StemOf(documentPath), installation + "\\Workspace",
          installation + "\\Library", installation + "\\ContentLibrary"};
}

}  // namespace drawboard
