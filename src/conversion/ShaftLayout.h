// The two layouts of shaft protocols as tables: what a value is called in the older layout and in
// the current one. All values are data parameters; numbered names end with "_" and the number.
#pragma once

#include <cstddef>
#include <span>

namespace quillmar::shaft {

// The fields of an element in the older layout, where their meaning depends on the type. Kept in
// memory under these numbers in both directions.
enum class Field : std::size_t {
  D,
  L,
  S1,
  S2,
  S1Add,
  S2Add,
  Drazka,  // the type's number
  Lr,
  Mll,
  Nbb,
  Xhh,
  Dxr,
  Unb,
  Pot,
  Hbz,
  Ppo,
  Nm,
  Nt,
  S1R,
  S2R
};
inline constexpr std::size_t kFields = 20;

// Names of the fields, in their order.
extern const char* const kFieldNames[kFields];

// A variable of an element in the current layout, and the field that holds its value in the older.
struct Variable {
  const char* current;
  Field old;
};

// What an element's variable is for: the calculation is told so in two records of each element.
enum class Group { Body, Ends };

struct CommonVariable {
  Variable variable;
  Group group;
};
std::span<const CommonVariable> CommonVariables();

inline constexpr int kFirstType = 1;
inline constexpr int kLastType = 17;
inline constexpr const char* kTypeVariable = "#spiType";

// Variables that elements of a type have beside the common ones. A variable that stands in two
// rows is written twice, and the second value stays.
std::span<const Variable> VariablesOfType(int type);

// The thread's pitch, the other way round: threads on a length of 1 in. Made from a field, not
// copied, by elements of that type alone.
inline constexpr int kThreadType = 4;
inline constexpr const char* kThreadsVariable = "LW_TPI";
inline constexpr Field kPitchField = Field::Unb;

// A value outside the elements; null where a layout does not have it.
struct Value {
  const char* current;
  const char* old;
};

// Rows of values that are numbered from 0.
struct NumberedList {
  const char* currentCount;
  const char* oldCount;
  std::span<const Value> values;
};

extern const NumberedList kSupports;
extern const NumberedList kLoads;

// The first is the material's number.
std::span<const Value> MaterialValues();

inline constexpr const char* kCurrentElementCount = "#spiCount";
inline constexpr const char* kOldElementCount = "ElNum";
inline constexpr const char* kActiveElement = "#spiAct";
inline constexpr const char* kInsertionPlace = "#spiInsPtX";

}  // namespace quillmar::shaft
