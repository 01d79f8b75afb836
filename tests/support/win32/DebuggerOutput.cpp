// Without a debugger the system raises an exception of its own for every text, which an in-process
// handler sees first.
#include "support/DebuggerOutput.h"

#include <windows.h>

#include <utility>

namespace {

constexpr DWORD kDebugPrint = 0x40010006;

std::vector<std::string>* seen = nullptr;

LONG CALLBACK TakePrint(EXCEPTION_POINTERS* raised) {
  const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
  if (record.ExceptionCode != kDebugPrint || seen == nullptr) return EXCEPTION_CONTINUE_SEARCH;
  const auto length = static_cast<std::size_t>(record.ExceptionInformation[0]);
  const auto text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  seen->emplace_back(text, ::strnlen(text, length));
  return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

struct DebuggerOutput::Backend {
  std::vector<std::string> texts;
  void* handler = nullptr;
};

DebuggerOutput::DebuggerOutput() : backend(std::make_unique<Backend>()) {
  seen = &backend->texts;
  backend->handler = AddVectoredExceptionHandler(1, TakePrint);
}

DebuggerOutput::~DebuggerOutput() {
  RemoveVectoredExceptionHandler(backend->handler);
  seen = nullptr;
}

std::vector<std::string> DebuggerOutput::Take() { return std::exchange(backend->texts, {}); }
