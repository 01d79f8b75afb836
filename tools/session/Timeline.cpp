#include "session/Timeline.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "session/Model.h"

namespace session {
namespace {

using quillmar::recorder::TracedCall;

bool IsStore(const TracedCall& call) { return call.to == "Keelcomm" || call.to == "Keellink"; }

std::string Shortened(const std::string& text, std::size_t width) {
  if (text.size() <= width) return text;
  return text.substr(0, width > 3 ? width - 3 : 0) + "...";
}

std::string Line(std::int64_t microseconds, const std::string& from, const std::string& to,
                 const std::string& what, const std::string& result, std::size_t width) {
  const std::string head =
      fmt::format("{:8.3f} s  {:>9} → {:<9} ", static_cast<double>(microseconds) / 1e6, from, to);
  const std::string tail = result.empty() ? std::string() : " = " + Shortened(result, 24);
  const std::size_t used = WidthOf(head) + tail.size();
  return head + Shortened(what, width > used ? width - used : 1) + tail + "\n";
}

std::string CallText(const TracedCall& call) {
  std::string text = call.function + "(";
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    text += (i > 0 ? ", " : "") + call.arguments[i];
  }
  return text + ")";
}

std::string CallLine(const TracedCall& call, std::size_t width) {
  return Line(call.microseconds, call.from, call.to, CallText(call), call.result, width);
}

// Calls of the stores from `begin` to `end`, told in one line.
std::string StoreLine(std::vector<TracedCall>::const_iterator begin,
                      std::vector<TracedCall>::const_iterator end, std::size_t width) {
  std::map<std::string, int> counts;
  int failed = 0;
  for (auto call = begin; call != end; ++call) {
    ++counts[call->to];
    if (call->result == "0") ++failed;
  }
  std::string what;
  for (const auto& [store, count] : counts) {
    what += fmt::format("{}{} {} of {}", what.empty() ? "" : ", ", count,
                        count == 1 ? "call" : "calls", store);
  }
  if (failed > 0) what += fmt::format("; {} answered 0", failed);
  return Line(begin->microseconds, begin->from, "stores", what, {}, width);
}

}  // namespace

Timeline::Timeline(const std::filesystem::path& traceFolder)
    : control(traceFolder), reader(traceFolder) {
  control.Record(true);
  control.Reset();
  start = std::chrono::system_clock::now();
}

std::int64_t Timeline::Now() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now() -
                                                               start)
      .count();
}

void Timeline::Title(const std::string& text) { titles.emplace_back(Now(), text); }

std::size_t Timeline::Begin(const char* function, const std::string& arguments) {
  TracedCall call;
  call.microseconds = Now();
  call.from = "session";
  call.to = "Quillmar";
  call.function = function;
  if (!arguments.empty()) call.arguments = {arguments};
  own.push_back(std::move(call));
  return own.size() - 1;
}

void Timeline::End(std::size_t place, const std::string& result) {
  own[place].result = result;
  own[place].duration = Now() - own[place].microseconds;
}

std::vector<TracedCall> Timeline::Calls() const {
  std::vector<TracedCall> calls = reader.Read();
  calls.insert(calls.end(), own.begin(), own.end());
  std::stable_sort(calls.begin(), calls.end(), [](const TracedCall& left, const TracedCall& right) {
    return left.microseconds < right.microseconds;
  });
  return calls;
}

std::string Timeline::Text(bool all, std::size_t width) const {
  const std::vector<TracedCall> calls = Calls();
  std::string text;
  auto title = titles.cbegin();
  const auto tellTitles = [&](std::int64_t until) {
    for (; title != titles.cend() && title->first <= until; ++title) {
      text += fmt::format("-- {}\n", title->second);
    }
  };
  for (auto call = calls.cbegin(); call != calls.cend();) {
    tellTitles(call->microseconds);
    if (all || !IsStore(*call)) {
      text += CallLine(*call++, width);
      continue;
    }
    const auto end = std::find_if(call, calls.cend(), [&](const TracedCall& each) {
      const bool inNextStep = title != titles.cend() && title->first <= each.microseconds;
      return !IsStore(each) || each.from != call->from || inNextStep;
    });
    text += StoreLine(call, end, width);
    call = end;
  }
  tellTitles(Now());
  return text;
}

}  // namespace session
