// check.
#include <fmt/format.h>

#include <functional>

#include "common/Place.h"
#include "common/Program.h"
#include "common/StoredRecord.h"
#include "common/Terminal.h"
#include "store/Commands.h"

namespace tools {
namespace {

using quillmar::VXProtocol;
using Report = std::function<void(const std::string&)>;

// Versions that conversions know.
constexpr int kOldestMajor = 1;
constexpr int kNewestMajor = 2;

void CheckLayout(const StoreAccess& store, const std::string& id, const Report& report) {
  const ProtocolSummary summary = store.Summary(id);
  if (summary.dataFile.empty()) report("does not say what calculation it is of");
  if (summary.major < kOldestMajor || summary.major > kNewestMajor) {
    report(fmt::format("has the unknown layout {}.{}", summary.major, summary.minor));
  }
}

void CheckReference(const StoreAccess& store, const std::string& id, const Report& report) {
  const auto lines =
      DifferencesOf(ReadRecord(store, id), ReadRecordOfReference(store, ReferenceOf(store, id)));
  for (const std::string& line : lines) report("its reference text does not give it back: " + line);
}

void CheckMentioned(const StoreAccess& store, const std::vector<std::string>& ids,
                    const std::string& what, const Report& report) {
  for (const std::string& id : ids) {
    if (!store.Exists(id)) report(fmt::format("{} {}, which is missing", what, ForUser(id)));
  }
}

void CheckMembers(const StoreAccess& store, VXProtocol& protocol, const Report& report) {
  int isSuper = 0;
  if (!protocol.IsSuperProtocol(isSuper)) return report("does not say whether it has members");
  std::vector<std::string> members;
  if (isSuper != 0 && !protocol.GetProtocolList(members)) report("its members cannot be read");
  CheckMentioned(store, members, "has the member", report);
}

void CheckLinks(const StoreAccess& store, VXProtocol& protocol, const Report& report) {
  const int incoming = protocol.GetLinksFromCount(true);
  std::string first;
  std::string second;
  for (int index = 1; index <= incoming; ++index) {
    int enabled = 0;
    int level = 0;
    if (!protocol.GetLinkFrom(index, first, second, enabled, level)) {
      report(fmt::format("its incoming link {} cannot be read", index));
      continue;
    }
    std::vector<std::string> parents;
    protocol.GetLinkFromParentList(index, parents);
    CheckMentioned(store, parents, fmt::format("its link \"{}\" comes from", ForUser(first)),
                   report);
  }
  const int outgoing = protocol.GetLinksToCount();
  for (int index = 1; index <= outgoing; ++index) {
    if (!protocol.GetLinkTo(index, first, second)) {
      report(fmt::format("its outgoing link {} cannot be read", index));
    } else {
      CheckMentioned(store, {second}, fmt::format("its link \"{}\" leads to", ForUser(first)),
                     report);
    }
  }
}

void CheckProtocol(const StoreAccess& store, const std::string& id, const Report& report) {
  CheckLayout(store, id, report);
  CheckReference(store, id, report);
  VXProtocol protocol(store.Context(), id);
  CheckMembers(store, protocol, report);
  CheckLinks(store, protocol, report);
}

}  // namespace

int CheckStore(const StoreAccess& store) {
  std::vector<std::string> findings = store.DatabaseFindings();
  const auto ids = store.Ids();
  {
    ProgressBar progress("Checking", ids.size());
    for (const std::string& id : ids) {
      const Report report = [&](const std::string& what) {
        findings.push_back(fmt::format("{}: {}", ForUser(id), what));
      };
      try {
        CheckProtocol(store, id, report);
      } catch (const ToolError& error) {
        report(error.what());
      }
      progress.Step();
    }
  }
  const Style style = StyleOf(Stream::Output);
  for (const std::string& finding : findings) Tell(style.Bad(finding));
  const std::string sum =
      Counted(ids.size(), "protocol") + ", " + Counted(findings.size(), "finding");
  Tell(findings.empty() ? style.Good(sum) : sum);
  return findings.empty() ? kDone : kFound;
}

}  // namespace tools
