#include "conversion/FirstGearConverter.h"

#include "platform/System.h"

namespace quillmar {
namespace {

struct ModelRow {
  const char* fm;
  const char* fp;
};

constexpr ModelRow kModels[] = {
    {"MODELA_FM", "MODELA_FP"},
    {"MODELAI_FM", "MODELAI_FP"},
    {"MODELB_FM", "MODELB_FP"},
    {"MODELBI_FM", "MODELBI_FP"},
};

enum class Rename { FmToFp, FpToFm };
enum class When { Always, QmarModeOff, QmarModeOn };

struct MinorStep {
  int fromMinor;
  int toMinor;
  Rename rename;
  When when;
};

constexpr MinorStep kMinorSteps[] = {
    {0, 1, Rename::FmToFp, When::QmarModeOff}, {0, 2, Rename::FpToFm, When::Always},
    {1, 0, Rename::FpToFm, When::QmarModeOff}, {1, 2, Rename::FpToFm, When::Always},
    {2, 0, Rename::FmToFp, When::QmarModeOn},  {2, 1, Rename::FmToFp, When::Always},
};

bool Applies(When when, bool qmarMode) {
  return when == When::Always || (when == When::QmarModeOn) == qmarMode;
}

// A key outside both families stays as it is.
std::string Renamed(const std::string& viewKey, Rename rename) {
  for (const ModelRow& row : kModels) {
    const char* from = rename == Rename::FmToFp ? row.fm : row.fp;
    if (platform::EqualsNoCase(viewKey, from)) return rename == Rename::FmToFp ? row.fp : row.fm;
  }
  return viewKey;
}

}  // namespace

bool FirstGearConverter::ConvertMinor(int fromMinor, int toMinor) {
  for (const MinorStep& step : kMinorSteps) {
    if (step.fromMinor != fromMinor || step.toMinor != toMinor) continue;
    if (!Applies(step.when, controller.QmarMode())) return false;
    std::string viewKey;
    if (protocol.GetViewKey(viewKey)) protocol.PutViewKey(Renamed(viewKey, step.rename));
    return true;
  }
  return false;
}

}  // namespace quillmar
