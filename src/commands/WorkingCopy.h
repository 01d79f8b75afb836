// A protocol opened from the reference text that a CAD object carries: the CAD holds the text, the
// store a working copy of it while a command acts. It is erased unless the command keeps it; a
// session of the group manager keeps all of them.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

class WorkingCopy {
 public:
  explicit WorkingCopy(const PartServices& services);
  // Erases the copy unless it is kept.
  ~WorkingCopy();
  WorkingCopy(const WorkingCopy&) = delete;
  WorkingCopy& operator=(const WorkingCopy&) = delete;

  // With `activate` a calculation window that holds the protocol comes to the front, and the
  // protocol does not open. True also when it is held and not activated: it is then not ready.
  bool Open(const std::string& reference, bool activate, Markers markers = Markers::Standard);
  VXProtocol& Protocol() { return protocol; }

  // The copy stays in the store and is closed; its identifier.
  std::string Keep();
  // The copy goes at once.
  void Discard();

 private:
  const PartServices& services;
  VXProtocol protocol;
  bool kept = false;
};

}  // namespace quillmar
