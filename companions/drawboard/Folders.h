// Windows paths of parts: folder markers, stems, extensions.
#pragma once

#include <string>

#include "drawboard/Document.h"

namespace drawboard {

// File name without folder and extension; the folder without trailing backslash.
std::string StemOf(const std::string& path);
std::string FolderOf(const std::string& path);
// Extension with its dot, empty without one.
std::string ExtensionOf(const std::string& path);

// Path of a file in which the markers "<ASM>\", "<WORKSPACE>\", "<LIB>\" and "<CONTENTLIB>\" stand
// for the document's folders. A path without drive lies in the assembly's folder. Throws a
// BoardError for an unknown marker, for characters that no file name holds and for "..".
std::string ResolvePath(const std::string& path, const MarkedFolders& folders);

// Folders of a new document: its assembly beside it, the others in the installation.
MarkedFolders DefaultFolders(const std::string& documentPath, const std::string& installation);

}  // namespace drawboard
