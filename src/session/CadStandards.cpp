#include "session/CadStandards.h"

#include "base/Texts.h"
#include "platform/Profile.h"

namespace quillmar {
namespace {

constexpr std::size_t kTextSize = 1024;  // NUL included

}  // namespace

bool CadStandards::Load(const std::string& iniPath) {
  Clear();
  iniFile = iniPath;
  const std::string names =
      platform::ReadProfileText(iniFile, "General", "Standards", "", kTextSize);
  if (names.empty()) return false;
  for (const std::string& name : SplitKeepingEmpty(names, ',')) {
    if (name.empty()) continue;
    const std::string mapped =
        platform::ReadProfileText(iniFile, "StdHXMapping", name, "", kTextSize);
    standards[name] = mapped.empty() ? name : mapped;
  }
  return true;
}

void CadStandards::Clear() {
  iniFile.clear();
  standards.clear();
}

}  // namespace quillmar
