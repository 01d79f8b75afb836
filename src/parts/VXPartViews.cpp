// Calculations with several views: one protocol for each view, which the main protocol links to.
#include <algorithm>

#include "parts/HostFiles.h"
#include "parts/ObtainProtocol.h"
#include "parts/ParameterLists.h"
#include "parts/PartFactory.h"
#include "parts/VXPart.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr int kViewLimit = 100;  // views are numbered below it, from 1
// A section holds no more keywords; a store that answers every number must not hang the update.
constexpr int kMostKeywords = 32767;
constexpr const char* kViewLink = "NewView";
constexpr const char* kModelTable = "models.ini";  // appended to the calculation's path as it is
constexpr const char* kModelSection = "Models";
constexpr std::size_t kModelBuffer = 1024;
constexpr int kWholeCalculation = 0;

std::string ViewKeyword(int number) { return "View" + std::to_string(number); }

// The value of a numbered view keyword; empty where the views end.
std::string ViewEntry(VXProtocol& protocol, const char* section, int number) {
  std::string value;
  protocol.GetKeyWord(section, ViewKeyword(number), value);
  return value;
}

std::string ModelOf(const std::string& table, const std::string& modelKey) {
  const std::string model =
      platform::ReadProfileText(table, kModelSection, modelKey, "", kModelBuffer);
  return model.empty() ? modelKey : model;
}

struct NamedValue {
  std::string name;
  std::string value;
};

std::vector<NamedValue> CadValuesOf(VXProtocol& protocol) {
  std::vector<std::string> names;
  protocol.GetKeyList(section::kData, names);
  std::vector<NamedValue> values;
  for (std::string& name : names) {
    std::string value;
    if (name.starts_with(kCadValuePrefix) && protocol.GetKeyWord(section::kData, name, value)) {
      values.push_back({std::move(name), std::move(value)});
    }
  }
  return values;
}

}  // namespace

// --- views of a new calculation ---

VXPart::Views VXPart::MakeViews(InsertMode mode) {
  Views views;
  if (mode != InsertMode::Plain && mode != InsertMode::Clipboard) return views;
  if (ViewEntry(protocol, section::kMcwViews, 1).empty()) return views;

  // Copied: the texts are the library's and the views' links change them.
  std::vector<std::string_view> texts;
  protocol.GetBuffer(texts);
  const std::vector<std::string> copies(texts.begin(), texts.end());
  const std::vector<std::string_view> buffer(copies.begin(), copies.end());
  std::string path;
  protocol.GetKeyWord(section::kGlobals, keyword::kPath, path);

  for (int number = 1; number < kViewLimit; ++number) {
    const std::string entry = ViewEntry(protocol, section::kMcwViews, number);
    if (entry.empty()) break;
    const auto comma = entry.find(',');
    const std::string modelKey =
        comma == std::string::npos ? std::string() : entry.substr(comma + 1);
    views.push_back(
        MakeView(buffer, number, entry.substr(0, comma), ModelOf(path + kModelTable, modelKey)));
  }
  return views;
}

std::unique_ptr<VXProtocol> VXPart::MakeView(const std::vector<std::string_view>& buffer,
                                             int number, const std::string& viewName,
                                             const std::string& model) {
  auto view = std::make_unique<VXProtocol>(services.protocols);
  // A view that the store did not make cannot be inserted, which ends the views where it stands.
  if (view->CreateNew() == 0) return view;
  view->PutBuffer(buffer);
  const std::string viewId = view->GetProtocolID();
  view->SetLinkFrom(kViewLink, protocol.GetProtocolID() + "@" + kViewLink);
  protocol.SetLinkTo(kViewLink, viewId);
  protocol.PutKeyWord(section::kMcwProtOrder, ViewKeyword(number), viewId);
  view->PutViewKey(viewName);
  view->PutModelID(model);
  AnnounceAndReopen(services.host, *view);
  return view;
}

// --- views of an existing calculation ---

VXPart::Views VXPart::CollectViews() {
  Views views;
  for (const std::string& viewId : LinkedViewIds()) {
    if (IsDrivenFurtherUp(viewId) || !ObtainProtocol(services, viewId)) continue;
    auto view = std::make_unique<VXProtocol>(services.protocols, viewId);
    if (view->IsReady()) views.push_back(std::move(view));
  }
  return views;
}

std::vector<std::string> VXPart::LinkedViewIds() {
  std::vector<std::string> viewIds;
  const int count = protocol.GetLinksToCount();
  for (int index = 1; index <= count; ++index) {
    std::string name;
    std::string viewId;
    if (protocol.GetLinkTo(index, name, viewId) && platform::EqualsNoCase(name, kViewLink)) {
      viewIds.push_back(std::move(viewId));
    }
  }
  return viewIds;
}

void VXPart::OrderViews(Views& views) {
  for (int number = 1; number <= kMostKeywords; ++number) {
    const std::string viewId = ViewEntry(protocol, section::kMcwProtOrder, number);
    if (viewId.empty()) break;
    const auto found = std::find_if(views.begin(), views.end(), [&](const auto& view) {
      return view->GetProtocolID() == viewId;
    });
    if (found == views.end()) continue;
    auto view = std::move(*found);
    views.erase(found);
    const auto place = std::min(static_cast<std::size_t>(number - 1), views.size());
    views.insert(views.begin() + static_cast<std::ptrdiff_t>(place), std::move(view));
  }
}

void VXPart::CopyCadValues(Views& views) {
  const std::vector<NamedValue> values = CadValuesOf(protocol);
  for (const auto& view : views) {
    for (const NamedValue& entry : values) {
      view->PutKeyWord(section::kData, entry.name, entry.value);
    }
    AnnounceAndReopen(services.host, *view);
  }
}

// --- the whole calculation in the CAD ---

// False only when the CAD does not begin: an object or a view that fails does not stop the rest of
// the procedure.
bool VXPart::DriveViews(Step step, Views& views, const std::string& connection,
                        const ExtDataPairs& pairs) {
  if (!StartViews()) return false;
  const bool driven =
      step == Step::Insert ? InsertIntoCad(connection, pairs) : ChangeInCad(connection, pairs);
  if (driven) {
    for (const auto& view : views) {
      if (!DriveView(step, *view)) break;
    }
    EndViews();
  }
  views.clear();
  return true;
}

bool VXPart::StartViews() {
  std::string calculationName;
  protocol.GetKeyWord(section::kCalc, keyword::kCalcName, calculationName);
  std::string unit;
  protocol.GetUnit(unit);
  std::string parameters;
  BuildParameterList(parameters);
  return !services.driver.McStart ||
         services.driver.McStart(kWholeCalculation, calculationName.c_str(), unit.c_str(),
                                 protocol.GetProtocolID().c_str(), parameters.c_str()) != 0;
}

void VXPart::EndViews() {
  if (services.driver.McEnd) services.driver.McEnd();
}

bool VXPart::DriveView(Step step, VXProtocol& view) {
  auto part = CreatePartForProtocol(services, view);
  if (!part) part = std::make_unique<VXPart>(services, view);
  Drive(*part);
  return step == Step::Insert ? part->Insert(InsertMode::View) : part->Update();
}

}  // namespace quillmar
