// Protocols as another user of the storage library sees them.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Bindings.h"

namespace quillmar::contract {

// Stands for what cannot be read.
inline const std::string kMissing = "(missing)";

// One protocol, open as long as this object lives. Every failure of the library fails the test.
class Record {
 public:
  Record();  // a new one
  explicit Record(const std::string& id);
  ~Record();
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  const std::string& Id() const { return id; }
  // Leaves the protocol open: somebody else closes it.
  void Abandon() { abandoned = true; }

  std::string KeyWord(const char* section, const char* keyword) const;
  std::string Global(const char* item) const;
  std::string ModelId() const;
  // "value unit".
  std::string Parameter(const char* name) const;
  // Names and values of the data parameters in the library's order.
  std::vector<std::pair<std::string, std::string>> Parameters() const;
  std::string Version() const;  // "major.minor"
  std::string Members() const;  // identifiers of member protocols, each followed by ";"

  Record& SetKeyWord(const char* section, const char* keyword, const std::string& value);
  Record& EraseKeyWord(const char* section, const char* keyword);
  Record& SetGlobal(const char* item, const std::string& value);
  Record& SetModelId(const std::string& model);
  Record& SetViewKey(const std::string& key);
  Record& SetVersion(int major, int minor);
  Record& SetMember(const std::string& member);
  Record& SetLinkFrom(const char* name, const std::string& text);
  Record& SetParameter(const char* name, const std::string& value, const std::string& unit);
  Record& SetLinkTo(const char* name, const std::string& text);
  // Sets the whole contents to what a reference text carries; the identifier in it is ignored.
  Record& SetFromReference(const std::string& reference);

  // Reference text: identifier, "<@PID>", buffer items each closed by "<@EL>".
  std::string Reference() const;

 private:
  std::string id;
  bool abandoned = false;
};

// 0 missing, 1 open in this process, 2 closed, 3 held by a calculation.
int StateOf(const std::string& id);
void Erase(const std::string& id);
// Protocols in the store, and the identifiers that the suite's own store lists.
int StoredProtocols();
std::set<std::string> ListedProtocols();

}  // namespace quillmar::contract
