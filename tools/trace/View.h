// Calls of a trace as lines for people.
#pragma once

#include <string>
#include <vector>

#include "common/Terminal.h"
#include "recorder/TraceReader.h"

namespace tools {

// Which calls are shown; empty texts stand for any.
struct Selection {
  std::string from, to, function;  // equal
  bool failedOnly = false;         // calls that gave 0, were made to fail or threw; and reports
  bool withoutStores = false;      // leaves out calls of the storage and link libraries

  bool Wants(const quillmar::recorder::TracedCall& call) const;
};

// A remark of a companion by itself, such as why a call failed.
bool IsReport(const quillmar::recorder::TracedCall& call);
bool HasFailed(const quillmar::recorder::TracedCall& call);

// At most `width` characters; 0: whole.
std::string LineOf(const quillmar::recorder::TracedCall& call, const Style& style,
                   std::size_t width);

// Numbers of calls that began and have no line: they were under way when their process died, or
// still are. `begun` is the number of the last call that began; 0 when it is not known.
std::vector<std::uint32_t> NeverEnded(const std::vector<quillmar::recorder::TracedCall>& calls,
                                      std::uint32_t begun);

// A table: calls, failures and times of each function.
std::string SummaryOf(const std::vector<quillmar::recorder::TracedCall>& calls, const Style& style);

}  // namespace tools
