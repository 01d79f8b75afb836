// A protocol opened from the reference text that a CAD object carries: the CAD holds the text, the
// store a working copy of it while a command acts. The store is left as it was found unless the
// command keeps the copy; a session of the group manager keeps all of them.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

class WorkingCopy {
 public:
  explicit WorkingCopy(const PartServices& services);
  // Erases what Open brought into the store, unless it is kept.
  ~WorkingCopy();
  WorkingCopy(const WorkingCopy&) = delete;
  WorkingCopy& operator=(const WorkingCopy&) = delete;

  // With `activate` a calculation window that holds the protocol comes to the front, and the
  // protocol does not open. True also when it is held and not activated: it is then not ready.
  bool Open(const std::string& reference, bool activate, Markers markers = Markers::Standard);
  VXProtocol& Protocol() { return protocol; }

  // The copy stays in the store and is closed; its identifier.
  std::string Keep();
  // The copy goes even when the store held the protocol before.
  void Discard();

 private:
  const PartServices& services;
  VXProtocol protocol;
  bool wasStored = false;
  bool kept = false;
};

}  // namespace quillmar
