// One ordered list of the calls that crossed a border of the parts: to the storage and link
// libraries, to the CAD driver and to the calculation host.
//
// A line reads "main GetKeyWord Cadx|Loop" (store and links: protocol, operation, arguments that go
// in), "cad ConnectProtocol main|main<@PID>" or "host". Identifiers of protocols are written by the
// names that the test gave them; those that the module makes are called new1, new2 ... Of reference
// texts only the beginning is written.
#pragma once

#include <string>
#include <vector>

#include "protocol/ProtocolLibraries.h"

namespace quillmar::test {

class Journal {
 public:
  static Journal& Get();

  void Reset();
  void Note(std::string line) { lines.push_back(std::move(line)); }
  void Name(const std::string& protocolId, const std::string& name);
  void NameNew(const std::string& protocolId);

  // The lines so far, without those before the last Reset.
  std::vector<std::string> Lines() const;
  // Those that begin with `front`.
  std::vector<std::string> LinesOf(const std::string& front) const;
  std::string WithNames(std::string text) const;

 private:
  std::vector<std::string> lines;
  std::vector<std::pair<std::string, std::string>> names;  // identifier, name
  int newProtocols = 0;
};

// Arguments of a call, joined by "|": texts and numbers that go in; pointers to outputs are left
// out.
class Arguments {
 public:
  void Add(const char* text) { AddText(text != nullptr ? Shortened(text) : "(null)"); }
  void Add(int number) { AddText(std::to_string(number)); }
  void Add(double number) { AddText(std::to_string(number)); }
  void Add(const void*) {}
  void Add(char*) {}
  const std::string& Text() const { return text; }

 private:
  static std::string Shortened(const std::string& text) {
    const auto marker = text.find("<@PID>");
    return marker == std::string::npos ? text : text.substr(0, marker + 6);
  }
  void AddText(const std::string& argument) { text += (count++ == 0 ? "" : "|") + argument; }

  std::string text;
  int count = 0;
};

template <class... Argument>
std::string Joined(Argument... argument) {
  Arguments arguments;
  (arguments.Add(argument), ...);
  return arguments.Text();
}

// Tables that note every call and pass it on to the real libraries.
StorageTable RecordedStorage(const StorageTable& real);
LinkTable RecordedLinks(const LinkTable& real);

}  // namespace quillmar::test
