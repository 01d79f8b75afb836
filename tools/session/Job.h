// What a session is to do, step by step. Read from a JSON file that a user writes, so whatever is
// wrong in it is named with its field.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace session {

// Something in the job is not as it must be; the text says where and what was expected.
class JobError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Inputs = std::vector<std::pair<std::string, std::string>>;

// All texts are in the system code page.

// Starts a calculation and waits until its parts stand in the CAD.
struct Calculation {
  std::string name;         // unique in the job
  std::string calculation;  // data-file type by which the module starts it
  std::string standard;
  std::string on;  // the calculation whose first part is selected meanwhile; empty: none
  Inputs inputs;
};

// Recalculates with other inputs and waits until the parts are updated.
struct Change {
  std::string name;  // of the calculation that is changed
  Inputs inputs;
};

// Options of the user, as an options dialog would store them.
struct Settings {
  std::string key;  // below the module's own
  struct Value {
    std::string name;
    std::variant<std::string, std::uint32_t> value;
  };
  std::vector<Value> values;
};

// Logs out and in again, so that the module reads its options anew.
struct NewLogin {};

using Step = std::variant<Calculation, Change, Settings, NewLogin>;

struct Job {
  std::string name;
  std::string document;
  std::string unit;  // "mm" or "in"
  std::vector<Step> steps;
};

// Reads a job from JSON text in UTF-8. Throws a JobError.
Job ReadJob(const std::string& text);

}  // namespace session
