// The calls of the host stand in the journal of this process, among all others, and can be refused
// like them, as long as this object lives. A host in this process always enters its calls itself.
#pragma once

#include <memory>

#include "HostSide.h"

namespace quillmar::contract {

class HostJournal {
 public:
  explicit HostJournal(const HostSide& host);
  ~HostJournal();
  HostJournal(const HostJournal&) = delete;
  HostJournal& operator=(const HostJournal&) = delete;

 private:
  struct Backend;
  std::unique_ptr<Backend> backend;
};

}  // namespace quillmar::contract
