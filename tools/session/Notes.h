// What a calculation says about its values: units, meanings and formulas, read from the reference
// text that an object of the CAD carries.
#pragma once

#include <map>
#include <string>

namespace session {

// Names and texts are in UTF-8, as those of the document.
class Notes {
 public:
  explicit Notes(const std::string& reference);

  // Empty when nothing is said.
  std::string Unit(const std::string& name) const;
  std::string Meaning(const std::string& name) const;
  std::string Formula(const std::string& name) const;  // of a result
  // A calculation that says something describes each of its values; any other value beside them was
  // left there by somebody else, such as the layout of an older document.
  bool IsForeign(const std::string& name) const {
    return !meanings.empty() && Meaning(name).empty();
  }
  bool IsInput(const std::string& name) const {
    return !Meaning(name).empty() && Formula(name).empty();
  }

 private:
  using Texts = std::map<std::string, std::string>;
  static std::string Find(const Texts& texts, const std::string& name);
  static std::string OfRow(const Texts& texts, const std::string& name);

  Texts units, meanings, formulas;
};

}  // namespace session
