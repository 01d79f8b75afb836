// Library models: what a part takes over from the model that it is made from. A model of this CAD
// is a JSON file:
//   {"parameters": {"name": "value"}, "features": {"name": "state"}, "configurations": ["name"]}
// each part of it optional. Another file, or none, gives nothing.
#pragma once

#include "drawboard/Document.h"

namespace drawboard {

// Adds the model's parameters that the object lacks, the states of features and the
// configurations that it does not know yet; the first configuration becomes the active one.
void ApplyLibraryModel(BoardObject& object);

// Takes back what came from a model, for a part that is then made from another one.
void ForgetLibraryModel(BoardObject& object);

}  // namespace drawboard
