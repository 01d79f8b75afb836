// Which protocols belong together: the tree of parents and children of a protocol, however deep
// and with whatever circles.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "parts/PartServices.h"
#include "platform/Progress.h"

namespace quillmar {

struct ScanDepths {
  int parents = -1;  // levels; -1 is unlimited
  int children = -1;
};

// The depths that the user chose last.
ScanDepths ChosenScanDepths(const OptionsStore& options);

class TreeScan {
 public:
  // `progress` shows the number of protocols scanned so far; null shows nothing.
  TreeScan(const PartServices& services, ScanDepths depths, platform::ProgressWindow* progress);

  // Puts the protocol and its tree on the list. False when the protocol itself does not open.
  // Children are taken from the CAD into the store and stay there; those that the CAD does not
  // have, and groups with members, are left out.
  bool Scan(const std::string& protocolId);

  // All that were found, each once: a protocol, then its parents and children, then theirs.
  const std::vector<std::string>& Found() const { return found; }

 private:
  struct Step {
    std::string protocolId;
    int level;
  };

  bool ScanOne(const Step& step, std::vector<Step>& next);
  void ShowProgress();
  void AddParents(const std::vector<std::string>& parents, int level, std::vector<Step>& next);
  void AddChildren(const std::vector<std::string>& children, int level, std::vector<Step>& next);
  bool IsChildKept(const std::string& protocolId);

  const PartServices& services;
  ScanDepths depths;
  platform::ProgressWindow* progress;
  std::vector<std::string> found;
  std::unordered_set<std::string> known;  // what was found, and what was left out
  int scanned = 0;
};

}  // namespace quillmar
