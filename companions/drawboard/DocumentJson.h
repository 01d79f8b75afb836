// The document as JSON text in UTF-8. What the kernel computes is written for readers and not read
// back.
#pragma once

#include <string>

#include "drawboard/Document.h"

namespace drawboard {

std::string DocumentToJson(const Document& document, const Kernel& kernel);

// Throws a BoardError that names the field which cannot be read.
Document DocumentFromJson(const std::string& text);

// Text of the part file of an object: its data without its place in the model.
std::string PartToJson(const BoardObject& object, const Document& document, const Kernel& kernel);

// True when a file's text begins as PartToJson writes it.
bool IsPartText(const std::string& text);

// True when both objects have the same part data, whatever calculation they come from.
bool SamePart(const BoardObject& left, const BoardObject& right);

// What the kernel is told of an object: its own data and the features that stand on it.
PartDescription DescribePart(const BoardObject& object, const Document& document);

// The properties under the names by which the CAD delivers them, in that order.
NamedTexts PhysicalPropertyTexts(const MassProperties& mass);

}  // namespace drawboard
