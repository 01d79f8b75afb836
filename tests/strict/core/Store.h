// What the set keeps in memory: protocols and the links between them. Names of protocols,
// sections, keywords, items and parameters match exactly, letter case included; nothing is kept in
// two places: global data are not keywords of a section, links are not keywords of a section.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/GuardedList.h"
#include "quillmar/Conventions.h"

namespace quillmar::strict {

struct DataParameter {
  std::string name;
  std::string value;
  std::string unit;
};

struct IncomingLink {
  std::string name;
  std::string text;
  int enabled = 1;
  int firstLevel = 0;
  int secondLevel = 0;
};

// Names with values in the order in which they were made.
using NamedTexts = std::vector<std::pair<std::string, std::string>>;

std::string* Find(NamedTexts& texts, const std::string& name);
void Put(NamedTexts& texts, const std::string& name, const std::string& value);
bool Erase(NamedTexts& texts, const std::string& name);

struct Protocol {
  enum class State { Closed, Open, HeldByCalculation };

  State state = State::Closed;
  QmWindow holder = 0;
  int major = 2;
  int minor = 0;
  NamedTexts globals;
  std::vector<std::pair<std::string, NamedTexts>> sections;
  std::vector<DataParameter> parameters;
  NamedTexts members;
  std::map<std::string, std::string> texts;  // "ModelID", "PartKey", "ViewKey", "Standard", ...
  std::vector<std::string> foreign;          // buffer items that are not of this store's making

  std::vector<IncomingLink> incoming;
  std::vector<std::pair<std::string, std::string>> outgoing;

  NamedTexts* Section(const std::string& name);
  NamedTexts& MakeSection(const std::string& name);
  DataParameter* Parameter(const std::string& name);

  // The record as texts, and back; state, version and links are no part of it.
  std::vector<std::string> Write() const;
  void Read(const std::vector<std::string>& items);
};

class Store {
 public:
  static Store& Instance();

  void Reset();
  std::string NewIdentifier(const char* prefix);
  Protocol* Find(const std::string& id);
  Protocol& Make(const std::string& id);  // finds it when it exists
  void Erase(const std::string& id);
  void HoldByCalculation(const std::string& id, QmWindow window);
  int OpenCount() const;
  int StoredCount() const { return static_cast<int>(protocols.size()); }

  QmStringList* HandOut(const std::string& id, const std::vector<std::string>& texts);
  // Makes lists that were handed out for the protocol unreadable.
  void ExpireLists(const std::string& id);

 private:
  std::map<std::string, Protocol> protocols;
  std::map<std::string, std::vector<GuardedList>> handedOut;
  // What expired stays unreadable until the next reset, which no user of the lists survives.
  std::vector<GuardedList> expired;
  int lastIdentifier = 0;
};

}  // namespace quillmar::strict
