// What a session is to do: calculations with their inputs, then changes of inputs. Read from a JSON
// file that a user writes, so whatever is wrong in it is named with its field.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace session {

// Something in the job is not as it must be; the text says where and what was expected.
class JobError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Inputs = std::vector<std::pair<std::string, std::string>>;

// All texts are in the system code page.
struct Calculation {
  std::string name;         // unique in the job
  std::string calculation;  // data-file type by which the module starts it
  std::string standard;
  Inputs inputs;
};

struct Change {
  std::string name;  // of the calculation that is changed
  Inputs inputs;
};

struct Job {
  std::string name;
  std::string document;
  std::string unit;  // "mm" or "in"
  std::vector<Calculation> calculations;
  std::vector<Change> changes;
};

// Reads a job from JSON text in UTF-8. Throws a JobError.
Job ReadJob(const std::string& text);

}  // namespace session
