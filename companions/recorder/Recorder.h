// The recorder: one ordered list of the calls that crossed a border between the module and its
// companions, over all modules and processes of a machine, and the place where a call is made to
// fail for a test.
//
// A companion describes its border once and runs each exported function through it:
//
//   static constexpr recorder::Border border{"Keelcomm", recorder::Kind::Storage};
//   #define EXPORT(...) QM_BORDER_EXPORT(border, store, QM_STDCALL, __VA_ARGS__)
//   QM_STORAGE_FUNCTIONS(EXPORT)     // exports Com_X(...), which runs store::Com_X(...)
//
// The trace is the folder "C:\Vantorel\Trace" of the machine whose image the companion belongs to
// (the companion finds it from its own file). It holds the control block and the log "calls.log".
// The recorder is off in a process that loads the companion while that folder or the control block
// is missing; a call then costs one pointer test more. TraceControl makes and steers a trace,
// TraceReader reads it.
//
// A line of the log, its fields separated by tabs: number of the call, microseconds since the trace
// began, process, from, to, function, "(arguments)", result, duration in microseconds. Lines are
// written when a call ends; numbers are given when it begins. Texts stand in quotes, what is not
// printable ASCII is escaped ("\n", "\xB3"); a text longer than the control block's limit is cut
// and followed by "+" and its full length. "&value" is what a call wrote through a pointer. What a
// companion remarks by itself is a call of "note" from itself to itself.
//
// Nothing thrown by a companion leaves a border: the call then has its failure result.
#pragma once

#include <concepts>
#include <cstdint>
#include <exception>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "quillmar/Conventions.h"
#include "recorder/Arguments.h"

namespace quillmar::recorder {

// What stands behind a border. Bits, so that a trace can count several kinds.
enum class Kind : std::uint32_t {
  Storage = 1,
  Link = 2,
  Driver = 4,
  Host = 8,
  Notification = 16,
  BoltedConnection = 32,
  Window = 64,
  Program = 128
};
inline constexpr std::uint32_t kAllKinds = 0xFF;

constexpr std::uint32_t operator|(Kind left, Kind right) {
  return static_cast<std::uint32_t>(left) | static_cast<std::uint32_t>(right);
}
constexpr std::uint32_t operator|(std::uint32_t left, Kind right) {
  return left | static_cast<std::uint32_t>(right);
}

// Who made a call: the module that holds a return address, or a name that is known anyway.
class Caller {
 public:
  static Caller At(const void* returnAddress) { return Caller(returnAddress, nullptr); }
  static Caller Named(const char* name) { return Caller(nullptr, name); }
  std::string Name() const;

 private:
  Caller(const void* address, const char* name) : address(address), name(name) {}
  const void* address;
  const char* name;
};

class Trace;

// The trace of this process, null when there is none. Set when the companion is loaded.
extern Trace* const attachedTrace;

// One call on its way. Made only when there is a trace.
class CallRecord {
 public:
  CallRecord(Trace& trace, Kind kind, const char* to, const char* function, Caller caller);
  CallRecord(const CallRecord&) = delete;
  CallRecord& operator=(const CallRecord&) = delete;

  // False: only counted; then the texts below are not needed.
  bool IsRecorded() const { return number != 0; }
  bool IsToFail() const { return toFail; }
  std::size_t TextLimit() const;
  // Writes the line.
  void End(const std::vector<std::string>& arguments, const std::string& result);

 private:
  Trace& trace;
  const char* to;
  const char* function;
  std::string from;
  std::uint32_t number = 0;
  bool toFail = false;
  std::int64_t begin = 0;
};

class Border {
 public:
  constexpr Border(const char* to, Kind kind) : to(to), kind(kind) {}

  // Runs `operation`, the companion's own function, as one call of `function`. Gives `failure`
  // without running it when the trace says that this call fails, and when it throws.
  // `arguments` are described in the log; pointers to values that are not const are outputs.
  template <typename Operation, typename... Arguments>
  std::invoke_result_t<Operation> Call(
      const char* function, Caller caller, Operation&& operation,
      const std::type_identity_t<std::invoke_result_t<Operation>>& failure,
      const std::tuple<Arguments...>& arguments) const noexcept {
    try {
      if (attachedTrace == nullptr) return operation();
      return RecordedCall(function, caller, operation, failure, arguments);
    } catch (...) {
      return failure;
    }
  }

  // Writes a remark of the companion, such as the reason of a failure, to the log.
  void Note(const std::string& text) const noexcept;

 private:
  template <typename Operation, typename Result, typename... Arguments>
  Result RecordedCall(const char* function, Caller caller, Operation& operation,
                      const Result& failure, const std::tuple<Arguments...>& arguments) const {
    CallRecord call(*attachedTrace, kind, to, function, caller);
    if (!call.IsRecorded()) return call.IsToFail() ? failure : operation();

    const std::size_t limit = call.TextLimit();
    std::vector<std::string> texts = DescribeInputs(arguments, limit);
    if (call.IsToFail()) {
      call.End(texts, "made to fail: " + Describe(failure, limit));
      return failure;
    }
    try {
      Result result = operation();
      if (ReadsOutputs(result, failure)) DescribeOutputs(arguments, limit, texts);
      call.End(texts, Describe(result, limit));
      return result;
    } catch (const std::exception& error) {
      call.End(texts, std::string("threw: ") + error.what());
      return failure;
    }
  }

  // Buffers of the storage and link functions hold texts from the start; others are only filled
  // by a call that succeeds.
  template <typename Result>
  bool ReadsOutputs(const Result& result, const Result& failure) const {
    if (kind == Kind::Storage || kind == Kind::Link) return true;
    if constexpr (std::equality_comparable<Result>) return !(result == failure);
    return true;
  }

  const char* to;
  Kind kind;
};

}  // namespace quillmar::recorder

// Exports function `name` of a contract list: `functions::name` behind the border, 0 as failure.
#define QM_BORDER_EXPORT(border, functions, convention, name, result, parameters, names) \
  QM_EXTERN_C QM_EXPORT result convention name parameters {                              \
    return border.Call(                                                                  \
        #name, ::quillmar::recorder::Caller::At(__builtin_return_address(0)),            \
        [&]() -> result { return functions::name names; }, result{0}, std::tie names);   \
  }
