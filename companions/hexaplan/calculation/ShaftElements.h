// The sections of a shaft as users meet them: seventeen kinds, each a cylinder or a cone with what
// is cut into it. The kinds and the names of their dimensions are those of shaft protocols.
#pragma once

#include <string>
#include <vector>

#include "hexaplan/calculation/Calculation.h"
#include "hexaplan/calculation/SteppedShaft.h"

namespace hexaplan {

// What an undercut at an end of a section leaves for the shoulder there.
struct Relief {
  double diameter = 0;  // mm, 0: there is none
  double radius = 0;    // mm
};

// One section; places of its notches are those from its left end.
struct ShaftElement {
  ShaftSection section;
  std::vector<Notch> notches;
  Relief left, right;
};

// Reads section `number`, from 1. Throws InputError when its dimensions do not fit.
ShaftElement ReadShaftElement(Inputs& inputs, int number, double tensileStrength);

// The corner of a shoulder that nobody gave a radius has this part of the smaller diameter.
inline constexpr double kSharpRadius = 0.02;

// Name of a field of a numbered row.
std::string Numbered(const char* name, int number);

// All fields of sections: names, and what they mean, by row "<name>_i".
std::vector<std::string> ElementFieldNames();
std::vector<ValueNote> ElementNotes();

}  // namespace hexaplan
