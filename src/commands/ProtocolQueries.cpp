#include "commands/ProtocolQueries.h"

#include <algorithm>
#include <iterator>

#include "commands/WorkingCopy.h"
#include "parts/PartFactory.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

struct TypeRow {
  int typeOfPart;
  int reported;
};

constexpr TypeRow kReportedTypes[] = {
    {1, 1}, {2, 3}, {3, 2}, {4, 8}, {5, 4}, {6, 5}, {7, 6}, {8, 7}, {9, 9}, {14, 10},
};

// In the order in which they are listed.
constexpr const char* kMcwParts[] = {
    "Bolt", "TopWasher1", "TopWasher2", "BottomWasher1", "BottomWasher2", "Nut1",
    "Nut2", "SplitPin",   "Hole1",      "Hole2",         "Hole3",
};

// A protocol that lives for one question: what a reference text says is read through it.
class TemporaryProtocol {
 public:
  explicit TemporaryProtocol(const PartServices& services) : protocol(services.protocols) {
    made = protocol.CreateNew() != 0;
  }
  ~TemporaryProtocol() {
    try {
      if (made) protocol.Erase();
    } catch (...) {
      // Without memory for a report it stays in the store.
    }
  }
  TemporaryProtocol(const TemporaryProtocol&) = delete;
  TemporaryProtocol& operator=(const TemporaryProtocol&) = delete;

  bool Fill(const std::string& reference, Markers markers) {
    return made && protocol.PutBufferFromReference(reference, markers);
  }
  std::string KeyWord(const char* section, const char* keyword) {
    std::string value;
    protocol.GetKeyWord(section, keyword, value);
    return value;
  }
  VXProtocol& Protocol() { return protocol; }

 private:
  VXProtocol protocol;
  bool made = false;
};

int ReportedType(VXProtocol& protocol) {
  int type = 0;
  protocol.GetTypeOfPart(type);
  const auto row = std::find_if(std::begin(kReportedTypes), std::end(kReportedTypes),
                                [&](const TypeRow& known) { return known.typeOfPart == type; });
  return row == std::end(kReportedTypes) ? 0 : row->reported;
}

}  // namespace

int IsSmartPart(const PartServices& services, const std::string& reference) {
  WorkingCopy copy(services);
  if (!copy.Open(reference, false)) return 0;
  int smart = 0;
  if (copy.Protocol().GetKeyWordInt(section::kCadx, keyword::kReallySmartPart, smart)) {
    return smart;
  }
  if (!services.options.SmartParts()) return 1;
  copy.Protocol().GetKeyWordInt(section::kCadx, keyword::kSmartPart, smart);
  return smart;
}

std::optional<bool> IsFeaturePositive(const PartServices& services, const std::string& protocolId) {
  VXProtocol protocol(services.protocols);
  int type = 0;
  if (!protocol.AttachExisting(protocolId) || !protocol.GetTypeOfPart(type)) {
    return std::nullopt;
  }
  if (type == 5 || type == 7) return true;
  if (type == 6 || type == 8) return false;
  return std::nullopt;
}

std::optional<std::string> GetProtocolItem(const PartServices& services,
                                           const std::string& protocolId,
                                           const std::string& section, const std::string& keyword) {
  VXProtocol protocol(services.protocols);
  std::string value;
  if (!protocol.AttachExisting(protocolId) || !protocol.GetKeyWord(section, keyword, value)) {
    return std::nullopt;
  }
  return value;
}

std::optional<ProtocolType> GetProtocolType(const PartServices& services,
                                            const std::string& reference, bool withName,
                                            bool withType) {
  TemporaryProtocol temporary(services);
  if (!temporary.Fill(reference, Markers::Standard)) return std::nullopt;
  ProtocolType type;
  if (withName) {
    type.calculation = temporary.KeyWord(section::kMcwData, keyword::kMcwDataFile);
    if (!type.calculation.empty()) {
      type.kind = ProtocolKind::BoltedConnection;
    } else {
      type.calculation = temporary.KeyWord(section::kCalc, keyword::kCalcName);
    }
  }
  const ProtocolKind byFile = KindOf(temporary.Protocol());
  if (byFile != ProtocolKind::Calculation) type.kind = byFile;
  if (withType) type.partType = ReportedType(temporary.Protocol());
  return type;
}

std::optional<std::vector<std::string>> GetAllMcwProtocolIds(const PartServices& services,
                                                             const std::string& reference) {
  std::string mainReference;
  {
    TemporaryProtocol temporary(services);
    if (!temporary.Fill(reference, Markers::Standard)) return std::nullopt;
    mainReference = temporary.KeyWord(section::kMcwData, keyword::kMcwMainProt);
  }
  std::vector<std::string> items;
  TemporaryProtocol main(services);
  std::string mainId;
  VXProtocol::ExtractProtocolID(mainReference, mainId, Markers::Alternate);
  if (!mainId.empty()) items.push_back(mainId);
  main.Fill(mainReference, Markers::Alternate);
  for (const char* part : kMcwParts) {
    std::string id = main.KeyWord(section::kMcwParts, part);
    if (!id.empty()) items.push_back(std::move(id));
  }
  return items;
}

std::optional<PartInformation> GetPartInformation(const PartServices& services,
                                                  const std::string& protocolId, bool change,
                                                  bool modelChanged) {
  VXProtocol protocol(services.protocols);
  if (!protocol.AttachExisting(protocolId)) return std::nullopt;
  const auto part = CreatePartForProtocol(services, protocol);
  if (!part) return std::nullopt;
  return part->Inform(change, modelChanged);
}

}  // namespace quillmar
