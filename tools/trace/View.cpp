#include "trace/View.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace tools {
namespace {

using quillmar::recorder::TracedCall;

bool IsStore(const TracedCall& call) { return call.to == "Keelcomm" || call.to == "Keellink"; }

double Milliseconds(std::int64_t microseconds) { return static_cast<double>(microseconds) / 1e3; }

}  // namespace

bool IsReport(const TracedCall& call) { return call.function == "note"; }

bool HasFailed(const TracedCall& call) {
  return call.result == "0" || call.result.starts_with("made to fail") ||
         call.result.starts_with("threw");
}

bool Selection::Wants(const TracedCall& call) const {
  const auto matches = [](const std::string& wanted, const std::string& is) {
    return wanted.empty() || wanted == is;
  };
  return matches(from, call.from) && matches(to, call.to) && matches(function, call.function) &&
         !(withoutStores && IsStore(call) && !IsReport(call)) &&
         (!failedOnly || HasFailed(call) || IsReport(call));
}

std::string LineOf(const TracedCall& call, const Style& style, std::size_t width) {
  const std::string head = fmt::format("{:>6} {:>10.3f} s {:>7} ", call.number,
                                       static_cast<double>(call.microseconds) / 1e6, call.process);
  const std::string tail = fmt::format("  {:.3f} ms", Milliseconds(call.duration));
  std::string what = IsReport(call)
                         ? fmt::format("{} reports {}", call.from, fmt::join(call.arguments, ", "))
                         : fmt::format("{} -> {} {}", call.from, call.to, call.Summary());
  const std::size_t others = head.size() + tail.size();
  if (width > others + 3 && what.size() > width - others) {
    what = what.substr(0, width - others - 3) + "...";
  }
  if (IsReport(call)) what = style.Warning(what);
  if (HasFailed(call)) what = style.Bad(what);
  return style.Weak(head) + what + style.Weak(tail);
}

std::vector<std::uint32_t> NeverEnded(const std::vector<TracedCall>& calls, std::uint32_t begun) {
  std::vector<std::uint32_t> numbers;
  for (const TracedCall& call : calls) {
    numbers.push_back(call.number);
    begun = std::max(begun, call.number);
  }
  std::sort(numbers.begin(), numbers.end());
  std::vector<std::uint32_t> missing;
  for (std::uint32_t number = 1; number <= begun; ++number) {
    if (!std::binary_search(numbers.begin(), numbers.end(), number)) missing.push_back(number);
  }
  return missing;
}

std::string SummaryOf(const std::vector<TracedCall>& calls, const Style& style) {
  struct Sum {
    std::size_t count = 0;
    std::size_t failed = 0;
    std::int64_t total = 0;
    std::int64_t longest = 0;
  };
  std::map<std::string, Sum> sums;
  for (const TracedCall& call : calls) {
    if (IsReport(call)) continue;
    Sum& sum = sums[call.to + " " + call.function];
    ++sum.count;
    sum.failed += HasFailed(call) ? 1 : 0;
    sum.total += call.duration;
    sum.longest = std::max(sum.longest, call.duration);
  }
  std::string text = style.Heading(fmt::format("{:<44} {:>7} {:>7} {:>11} {:>11}", "Function",
                                               "calls", "gave 0", "all ms", "longest ms"));
  for (const auto& [name, sum] : sums) {
    text += fmt::format("\n{:<44} {:>7} {:>7} {:>11.3f} {:>11.3f}", name, sum.count, sum.failed,
                        Milliseconds(sum.total), Milliseconds(sum.longest));
  }
  return text;
}

}  // namespace tools
