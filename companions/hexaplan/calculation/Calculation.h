// The calculations that the host offers. A calculation turns inputs into parts: for each part the
// library model it is built from, its descriptions, and all its parameters.
#pragma once

#include <string>
#include <vector>

#include "hexaplan/calculation/Fields.h"

namespace hexaplan {

// Kinds of CAD objects that a calculation can yield, by their protocol number. A feature adds
// material to the part that it belongs to, a cut takes it away.
enum class PartKind {
  Parametric = 2,
  Model = 3,  // the host writes its body into a file
  Feature = 7,
  Cut = 8,
  Shaft = 9,
  Format = 12,
  Symbol = 13,
  Cam = 14
};

struct CalculatedPart {
  PartKind kind = PartKind::Parametric;
  std::string modelId;      // library model without folder and extension; of a view: its model key
  std::string viewKey;      // view of the model
  std::string caption;      // description shown in the CAD
  std::string description;  // first column of a bill of materials
  std::string size;         // second column
  std::string subtype;      // what tells this part from others of the same calculation
  std::string material;
  double mass = 0;                        // kg
  std::vector<DataParameter> parameters;  // inputs and results
  std::vector<CalculatedPart> views;      // further objects of the same calculation
};

// What a value means, and for a result by which formula it was found and whose that is. The name
// "<name>_i" stands for all of a numbered row.
struct ValueNote {
  std::string name;
  std::string meaning;
  std::string formula = {};  // empty: an input
};

class Calculation {
 public:
  virtual ~Calculation() = default;
  // Data-file type by which the module starts it, and the name that users see.
  virtual const char* DataFile() const = 0;
  virtual const char* Name() const = 0;
  // Protocols of an older layout name the values otherwise.
  virtual bool HasOlderLayout() const { return true; }
  // Calculates one or more parts; the first belongs to the protocol that was shown. Results bear
  // metric units. Throws InputError when the values make no sense.
  virtual std::vector<CalculatedPart> Run(Inputs& inputs) const = 0;
  // Names of the parameters that are numbered "<name>_<number>"; how many of each there are depends
  // on the inputs.
  virtual std::vector<std::string> NumberedNames() const { return {}; }
  // About the parameters but "units", for the user who looks at one; every result is among them.
  virtual std::vector<ValueNote> Notes() const = 0;
};

// Runs a calculation in the units that the inputs choose; its parts are in these units.
std::vector<CalculatedPart> Calculate(const Calculation& calculation, Inputs& inputs);

// The calculation of a data-file type (the text after "KEELDATA|", any case), null when the host
// has none.
const Calculation* FindCalculation(const std::string& dataFileType);

}  // namespace hexaplan
