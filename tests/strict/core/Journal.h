// The journal of calls and broken promises, and the answers laid down for calls to come.
#pragma once

#include <map>
#include <string>
#include <thread>
#include <vector>

#include "StrictCore.h"

namespace quillmar::strict {

struct JournalEntry {
  std::string function;
  std::vector<std::string> arguments;
  int result = 0;
  bool refused = false;
};

class Journal {
 public:
  // Lives until the process ends: a library that is unloaded late may still be called.
  static Journal& Instance();

  void Reset();
  int Begin(const std::string& function);
  void AddArgument(int call, const std::string& text);
  void End(int call, int result);
  void Violate(const std::string& function, const std::string& promise);

  void SetAnswer(const std::string& key, const char* answer);
  const std::string* Answer(const std::string& key) const;

  void SetVisitor(StrictVisitor newVisitor) { visitor = newVisitor; }
  bool Refused(int call) const { return At(call) != nullptr && At(call)->refused; }

  const JournalEntry* At(int call) const;
  int CallCount() const { return static_cast<int>(entries.size()); }
  const std::vector<std::string>& Violations() const { return violations; }

 private:
  std::vector<JournalEntry> entries;
  std::vector<std::string> violations;
  std::map<std::string, std::string> answers;
  StrictVisitor visitor = nullptr;
  std::thread::id caller;  // the one thread on which every call must come
};

}  // namespace quillmar::strict
