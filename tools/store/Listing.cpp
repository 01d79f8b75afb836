// list, show and diff.
#include <fmt/format.h>

#include "common/Place.h"
#include "common/Program.h"
#include "common/ReferenceFiles.h"
#include "common/StoredRecord.h"
#include "common/Terminal.h"
#include "store/Commands.h"

namespace tools {
namespace {

constexpr const char* kRow = "{:<25} {:>7} {:<14} {:>4} {:<14} {:>6}{}";

std::string VersionOf(const ProtocolSummary& summary) {
  return fmt::format("{}.{}", summary.major, summary.minor);
}

const char* StateOf(const ProtocolSummary& summary) {
  return summary.state == QM_PROTOCOL_HELD_BY_CALCULATION ? "  held by a calculation" : "";
}

bool IsFile(const std::string& operand) {
  return operand.find_first_of("/\\") != std::string::npos || operand.ends_with(".ref");
}

StoredRecord RecordOf(const StoreAccess& store, const std::string& operand) {
  if (!IsFile(operand)) return ReadRecord(store, FromUser(operand));
  return ReadRecordOfReference(store, ReadReferenceFile(operand));
}

void TellFields(const StoredRecord& record, const Style& style) {
  std::string section;
  for (const Field& field : record.fields) {
    if (field.section.empty()) {
      Tell(style.Weak("(text) ") + ForUser(field.value));
      continue;
    }
    if (field.section != section) Tell(style.Heading("[" + ForUser(field.section) + "]"));
    section = field.section;
    const std::string unit = field.unit.empty() ? "" : " " + ForUser(field.unit);
    Tell(
        fmt::format("  {} = {}{}", ForUser(field.keyword), ForUser(field.value), style.Weak(unit)));
  }
}

}  // namespace

int ListProtocols(const StoreAccess& store, bool idsOnly) {
  const auto ids = store.Ids();
  if (idsOnly) {
    for (const std::string& id : ids) Tell(ForUser(id));
    return kDone;
  }
  std::string table;
  ProgressBar progress("Reading", ids.size());
  for (const std::string& id : ids) {
    const ProtocolSummary row = store.Summary(id);
    table += fmt::format(kRow, ForUser(id), VersionOf(row), ForUser(row.dataFile),
                         ForUser(row.type), ForUser(row.viewKey), row.values, StateOf(row));
    table += '\n';
    progress.Step();
  }
  const Style style = StyleOf(Stream::Output);
  Tell(style.Heading(
      fmt::format(kRow, "Protocol", "Version", "Calculation", "Type", "View", "Values", "")));
  Tell(table + Counted(ids.size(), "protocol"));
  return kDone;
}

int ShowProtocol(const StoreAccess& store, const std::string& id) {
  store.RequireProtocol(id);
  const Style style = StyleOf(Stream::Output);
  const ProtocolSummary summary = store.Summary(id);
  Tell(fmt::format("{} {}, version {}{}", style.Heading("Protocol"), ForUser(id),
                   VersionOf(summary), StateOf(summary)));
  TellFields(ReadRecord(store, id), style);
  return kDone;
}

int ShowDifferences(const StoreAccess& store, const std::string& left, const std::string& right) {
  const auto lines = DifferencesOf(RecordOf(store, left), RecordOf(store, right));
  const Style style = StyleOf(Stream::Output);
  for (const std::string& line : lines) {
    Tell(line.front() == '-'   ? style.Bad(line)
         : line.front() == '+' ? style.Good(line)
                               : style.Warning(line));
  }
  return lines.empty() ? kDone : kFound;
}

}  // namespace tools
