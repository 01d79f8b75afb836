#include "recorder/Recorder.h"

#include <cstring>
#include <string_view>

#include "recorder/Trace.h"

namespace quillmar::recorder {
namespace {

Trace* AttachTrace() {
  const auto folder = TraceFolderOfThisModule();
  if (!folder) return nullptr;
  static std::optional<Trace> trace = Trace::Open(*folder);
  return trace ? &*trace : nullptr;
}

// Counts a call of a counted kind and tells whether it is one that fails.
bool CountAndCheck(ControlBlock& control, const std::string& from) {
  const std::string_view wanted(control.countedCaller,
                                ::strnlen(control.countedCaller, sizeof control.countedCaller));
  if (!wanted.empty() && wanted != from) return false;
  const std::uint32_t number = Shared(control.counted).fetch_add(1) + 1;
  const std::uint32_t failAt = Shared(control.failAt).load();
  if (failAt == 0 || number < failAt) return false;
  if (number > failAt && Shared(control.failLater).load() == 0) return false;
  Shared(control.failed).fetch_add(1);
  return true;
}

}  // namespace

Trace* const attachedTrace = AttachTrace();

std::string Caller::Name() const { return name != nullptr ? name : ModuleNameAt(address); }

std::optional<Trace> Trace::Open(const std::filesystem::path& folder) {
  SharedMemory memory(folder / kControlFile, sizeof(ControlBlock));
  const auto* control = static_cast<const ControlBlock*>(memory.Get());
  if (control == nullptr || control->version != kControlVersion ||
      std::memcmp(control->magic, kControlMagic, sizeof kControlMagic) != 0) {
    return std::nullopt;
  }
  return Trace(std::move(memory), SharedLog(folder / kLogFile));
}

std::int64_t Trace::Start() {
  return (static_cast<std::int64_t>(Control().startHigh) << 32) | Control().startLow;
}

CallRecord::CallRecord(Trace& trace, Kind kind, const char* to, const char* function, Caller caller)
    : trace(trace), to(to), function(function) {
  ControlBlock& control = trace.Control();
  const bool isRecorded = Shared(control.recording).load() != 0;
  const bool isCounted =
      (Shared(control.countedKinds).load() & static_cast<std::uint32_t>(kind)) != 0;
  if (!isRecorded && !isCounted) return;

  from = caller.Name();
  if (isCounted) toFail = CountAndCheck(control, from);
  if (isRecorded) {
    number = Shared(control.calls).fetch_add(1) + 1;
    begin = ClockMicroseconds();
  }
}

std::size_t CallRecord::TextLimit() const { return Shared(trace.Control().textLimit).load(); }

void CallRecord::End(const std::vector<std::string>& arguments, const std::string& result) {
  const std::int64_t end = ClockMicroseconds();
  std::string line;
  const auto add = [&line](std::string_view field) { line.append(field).push_back('\t'); };
  add(std::to_string(number));
  add(std::to_string(begin - trace.Start()));
  add(std::to_string(ThisProcess()));
  add(from);
  add(to);
  add(function);
  line += '(';
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i > 0) line += ", ";
    line += arguments[i];
  }
  add(")");
  add(result);
  line += std::to_string(end - begin) + '\n';

  const auto length = static_cast<std::uint32_t>(line.size());
  trace.Log().WriteAt(Shared(trace.Control().logLength).fetch_add(length), line);
}

void Border::Note(const std::string& text) const noexcept {
  if (attachedTrace == nullptr) return;
  try {
    // Of no kind: a remark is not counted.
    CallRecord call(*attachedTrace, Kind{}, to, "note", Caller::Named(to));
    if (call.IsRecorded()) call.End({DescribeText(text, call.TextLimit())}, "");
  } catch (const std::exception&) {
    // A remark that finds no memory is lost.
  }
}

}  // namespace quillmar::recorder
