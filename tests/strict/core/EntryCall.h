// One call of a storage or link function: its journal entry, its checks, its result.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "core/Store.h"

namespace quillmar::strict {

class EntryCall {
 public:
  explicit EntryCall(const char* function);
  // Records the result; a call that was not accepted has failed.
  ~EntryCall();
  EntryCall(const EntryCall&) = delete;
  EntryCall& operator=(const EntryCall&) = delete;

  // The identifier, which expires lists handed out for its protocol. Opened also asks that the
  // protocol is open here: the call fails otherwise. Null when the call fails.
  Protocol* Named(const char* id);
  Protocol* Opened(const char* id);

  // Arguments in their order. A null text or output breaks the contract.
  std::string Text(const char* text);
  void Number(int number);
  bool Output(const void* output);
  // Growing buffers of one call: each holds N blanks and a NUL, N a multiple of 1024, all alike.
  void Growing(std::initializer_list<char*> buffers);
  // An identifier buffer of 260 bytes; its text. Empty when it holds none.
  std::string IdentifierBuffer(char* buffer);
  void Note(const std::string& argument);

  void Violate(const std::string& promise);
  // True while nothing speaks against the call.
  bool Sound() const { return sound; }
  bool Require(bool condition) { return sound = sound && condition; }

  // Results. Fill accepts the call and writes the values into the growing buffers.
  short Accept(short result = 1);
  short Fill(std::initializer_list<std::string> values);
  short Refuse(short result = 0);
  int Count(int count);

 private:
  std::string function;
  int entry;
  int result = 0;
  bool sound = true;
  std::vector<char*> growing;
  std::size_t capacity = 0;
};

// Writes an identifier into a buffer of 260 bytes and uses every byte of it.
void WriteIdentifier(char* buffer, const std::string& id);

}  // namespace quillmar::strict
