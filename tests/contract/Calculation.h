// A calculated protocol, as the host leaves it, and the driver arguments that follow from it.
#pragma once

#include <map>

#include "Contract.h"

namespace quillmar::contract {

// TypeOfPart of the kinds that the tests insert.
inline constexpr const char* kParametricPart = "2";
inline constexpr const char* kShaft = "9";
inline constexpr const char* kAssembly = "10";
inline constexpr const char* kCalculationObject = "4";

class Calculation : public Contract {
 protected:
  // A session whose file names and extended data can be foretold.
  explicit Calculation(const LoginArguments& arguments = {});

  // A shared part (not made for this design only) with parameters, captions and extended data.
  static void Fill(Record& record, const char* typeOfPart);
  // Makes it, closes it and returns its identifier.
  static std::string Calculated(const char* typeOfPart);

  // What the driver gets for such a protocol.
  static std::string ModelPath() { return "C:\\Vantorel\\Models\\models\\Shaft_1.prt"; }
  static std::string Caption() { return "Shaft of test"; }
  static std::string SharedFile() { return "<LIB>\\SHAFT 20x30.prt"; }
  static std::string Pairs() { return "Fixed=Fixed\nSize=20x30\n"; }
  // The plain parameter list of the protocol as it stands.
  static std::string ParameterList(const Record& record);

  // --- the order of calls ---

  // Calls a protocol so in the steps.
  void Name(const std::string& id, const std::string& name) { names[id] = name; }
  // The driver's calls as "<function> <protocols>", where "@" stands in front of a reference text;
  // window functions are left out. With the store also what changed something in it, as "<function>
  // <arguments>": only the strict companions tell that.
  std::vector<std::string> Steps(const std::vector<JournalCall>& calls, bool withStore) const;
  std::vector<std::string> Steps() const { return Steps(Calls(), false); }
  // The host's commands with the names of protocols.
  std::vector<std::string> HostSteps() const;

  // The one call of `function`, whose argument at `connection` must be a reference text that
  // carries the protocol's contents; that argument is replaced by its identifier.
  std::vector<std::string> OnlyCall(const std::string& function, std::size_t connection);

 private:
  std::string Named(const std::string& text) const;

  std::map<std::string, std::string> names;
};

}  // namespace quillmar::contract
