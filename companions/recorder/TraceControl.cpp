#include "recorder/TraceControl.h"

#include <cstring>
#include <fstream>
#include <stdexcept>

namespace quillmar::recorder {
namespace {

void MakeControlFile(const std::filesystem::path& file) {
  ControlBlock control{};
  std::memcpy(control.magic, kControlMagic, sizeof kControlMagic);
  control.version = kControlVersion;
  control.textLimit = TraceControl::kDefaultTextLimit;
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&control), sizeof control);
}

Trace OpenOrMake(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  if (auto trace = Trace::Open(folder)) return std::move(*trace);
  MakeControlFile(folder / kControlFile);
  auto trace = Trace::Open(folder);
  if (!trace) throw std::runtime_error("no trace can be made in " + folder.string());
  return std::move(*trace);
}

}  // namespace

TraceControl::TraceControl(const std::filesystem::path& folder)
    : folder(folder), trace(OpenOrMake(folder)) {
  Reset();
}

std::filesystem::path TraceControl::FolderOfImage(const std::filesystem::path& image) {
  return image / "drive_c" / "Vantorel" / "Trace";
}

void TraceControl::Reset() {
  ControlBlock& control = Control();
  SetFault(0);
  Shared(control.calls).store(0);
  Shared(control.counted).store(0);
  Shared(control.failed).store(0);
  // Writers keep the file open, so it is emptied in place.
  std::error_code ignored;
  std::filesystem::resize_file(folder / kLogFile, 0, ignored);
  Shared(control.logLength).store(0);
  const std::int64_t now = ClockMicroseconds();
  control.startLow = static_cast<std::uint32_t>(now);
  control.startHigh = static_cast<std::uint32_t>(now >> 32);
}

void TraceControl::Record(bool on) { Shared(Control().recording).store(on ? 1 : 0); }

void TraceControl::SetTextLimit(std::uint32_t characters) {
  Shared(Control().textLimit).store(characters);
}

void TraceControl::Count(std::uint32_t kinds, const std::string& caller) {
  ControlBlock& control = Control();
  Shared(control.countedKinds).store(0);
  std::memset(control.countedCaller, 0, sizeof control.countedCaller);
  caller.copy(control.countedCaller, sizeof control.countedCaller - 1);
  Shared(control.counted).store(0);
  Shared(control.failed).store(0);
  Shared(control.countedKinds).store(kinds);
}

std::uint32_t TraceControl::CountedCalls() { return Shared(Control().counted).load(); }

void TraceControl::SetFault(std::uint32_t number, FaultMode mode) {
  Shared(Control().failAt).store(0);
  Shared(Control().failLater).store(mode == FaultMode::FromThenOn ? 1 : 0);
  Shared(Control().failAt).store(number);
}

std::uint32_t TraceControl::FailedCalls() { return Shared(Control().failed).load(); }

}  // namespace quillmar::recorder
