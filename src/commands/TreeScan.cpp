#include "commands/TreeScan.h"

#include <iterator>
#include <set>

#include "base/Texts.h"
#include "commands/ProtocolCreation.h"
#include "commands/WorkingCopy.h"
#include "options/DepthDialog.h"
#include "parts/CadListReaders.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr int kUnlimited = -1;

// The list of depths begins with "none" and ends with "unlimited"; between them stand the numbers.
int ChosenDepth(const OptionsStore& options, const std::set<int>& numbers, const char* name) {
  const int last = static_cast<int>(numbers.size()) + 1;
  const int chosen = options.ReadOptionInt("OptGeneral", name, last);
  if (chosen == 0) return 0;
  if (chosen < 0 || chosen >= last) return kUnlimited;
  return *std::next(numbers.begin(), chosen - 1);
}

bool IsWithin(int level, int depth) { return depth == kUnlimited || level < depth; }

// A parent is named with the link it is linked by behind an "@".
std::string WithoutLink(const std::string& parent) { return parent.substr(0, parent.find('@')); }

}  // namespace

ScanDepths ChosenScanDepths(const OptionsStore& options) {
  const std::set<int> numbers = OfferedDepths(options);
  return {ChosenDepth(options, numbers, "DepthParIdx"),
          ChosenDepth(options, numbers, "DepthChiIdx")};
}

TreeScan::TreeScan(const PartServices& owner, ScanDepths limits, platform::ProgressWindow* window)
    : services(owner), depths(limits), progress(window) {}

// The steps that are still to be taken are kept here and not on the stack of the thread: a chain
// of protocols may be as long as the model is large.
bool TreeScan::Scan(const std::string& protocolId) {
  if (known.insert(protocolId).second) found.push_back(protocolId);
  std::vector<Step> next;
  const bool opened = ScanOne({protocolId, 0}, next);
  std::vector<Step> steps(next.rbegin(), next.rend());
  while (!steps.empty()) {
    const Step step = std::move(steps.back());
    steps.pop_back();
    next.clear();
    ScanOne(step, next);
    steps.insert(steps.end(), next.rbegin(), next.rend());
  }
  return opened;
}

bool TreeScan::ScanOne(const Step& step, std::vector<Step>& next) {
  ShowProgress();
  std::vector<std::string> parents;
  std::vector<std::string> children;
  {
    VXProtocol protocol(services.protocols, step.protocolId);
    if (!protocol.IsReady()) return false;
    std::string scan;
    protocol.GetGlobalData(global::kReallyScan, scan);
    const bool scansChildren = ParseInt(scan) != 0;
    int type = 0;
    protocol.GetTypeOfPart(type);
    const bool isAssembly = type == kAssemblyType;
    if (IsWithin(step.level, depths.parents) && (!isAssembly || !scansChildren)) {
      protocol.GetParentsList(parents);
    }
    if (IsWithin(step.level, depths.children) && (!isAssembly || scansChildren)) {
      protocol.GetKeyList(section::kLinksTo, children);
    }
  }
  AddParents(parents, step.level + 1, next);
  AddChildren(children, step.level + 1, next);
  return true;
}

void TreeScan::ShowProgress() {
  if (progress != nullptr) progress->ShowText(std::to_string(scanned));
  ++scanned;
}

void TreeScan::AddParents(const std::vector<std::string>& parents, int level,
                          std::vector<Step>& next) {
  for (const std::string& parent : parents) {
    const std::string id = WithoutLink(parent);
    if (id.empty() || !known.insert(id).second) continue;
    found.push_back(id);
    next.push_back({id, level});
  }
}

// A child that was left out once is not asked for again on other ways.
void TreeScan::AddChildren(const std::vector<std::string>& children, int level,
                           std::vector<Step>& next) {
  for (const std::string& id : children) {
    if (id.empty() || !known.insert(id).second || !IsChildKept(id)) continue;
    found.push_back(id);
    next.push_back({id, level});
  }
}

bool TreeScan::IsChildKept(const std::string& protocolId) {
  std::string reference;
  if (!ReadCadReference(services.driver, protocolId, reference)) return false;
  WorkingCopy copy(services);
  if (!copy.Open(reference, false)) return false;
  // One that a calculation holds is there and no group.
  if (!copy.Protocol().IsReady()) return true;
  short members = 0;
  if (copy.Protocol().GetProtocolCount(members) && members > 0) return false;
  copy.Keep();
  return true;
}

}  // namespace quillmar
