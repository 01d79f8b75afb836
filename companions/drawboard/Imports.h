// Files that another program wrote for the document: the document keeps a copy of its own, for the
// other program's files are temporary.
#pragma once

#include <memory>
#include <string>

#include "drawboard/Document.h"
#include "drawboard/PartFiles.h"

namespace drawboard {

// Copies `source` beside the document's parts, under the object's name and the source's extension,
// and sets `copy` to its path. A copy that `copy` names already is written anew. An empty source
// copies nothing. Throws a BoardError when the source cannot be read.
void ImportFile(const Document& document, const std::string& objectName, const std::string& source,
                std::string& copy, FileChanges& files);

// The body in a model file (".c3d", ".c3p"); null for other files. Throws a BoardError when the
// file cannot be read or encloses no body.
std::shared_ptr<const FacetBody> ReadModelFile(const std::string& path);

}  // namespace drawboard
