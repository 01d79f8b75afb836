#include "common/StoreAccess.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "base/Texts.h"
#include "common/Place.h"
#include "common/Program.h"
#include "platform/Files.h"
#include "protocol/ProtocolVocabulary.h"

namespace tools {
namespace {

namespace platform = quillmar::platform;
using quillmar::VXProtocol;

std::string EnterMachine(const StorePlace& place) {
  if (!EnterImage(place.image)) {
    throw ToolError(fmt::format(
        "{} is no machine image: it has no folder drive_c (--image names one)", place.image));
  }
  const std::string suite = FromUser(place.suite);
  for (const char* library : {QM_STORAGE_LIBRARY, QM_LINK_LIBRARY}) {
    if (!platform::FileExists(suite + "\\" + library)) {
      throw ToolError(
          fmt::format("There is no {} in {} (--suite names the folder)", library, place.suite));
    }
  }
  return suite;
}

template <typename Function>
void BindTo(Function& function, const char* name) {
  function = reinterpret_cast<Function>(
      platform::FindFunction(platform::FindLoadedModule(QM_STORAGE_LIBRARY), name));
  if (function != nullptr) return;
  throw ToolError(QM_STORAGE_LIBRARY
                  " does not list its protocols: it is not of this suite's make");
}

}  // namespace

void StorePlace::AddOptions(CLI::App& app) {
  app.add_option("--image", image, "Folder of the machine (it holds drive_c); on Windows not used")
      ->capture_default_str();
  app.add_option("--suite", suite, "Folder of the suite on the machine")->capture_default_str();
}

StoreAccess::StoreAccess(const StorePlace& place) : suite(EnterMachine(place)) {
  if (!libraries.Load(suite, "Protocol store")) {
    throw ToolError(fmt::format("The libraries in {} cannot be loaded", place.suite));
  }
  BindTo(listProtocols, "Keelcomm_ListProtocols");
  BindTo(checkDatabase, "Keelcomm_CheckDatabase");
}

std::vector<std::string> StoreAccess::Ids() const {
  const char* const* ids = nullptr;
  int count = 0;
  if (listProtocols(&ids, &count) == 0) throw ToolError("The store cannot be read");
  return {ids, ids + count};
}

std::vector<std::string> StoreAccess::DatabaseFindings() const {
  const char* findings = nullptr;
  if (checkDatabase(&findings) == 0) return {"the database cannot be read"};
  return quillmar::SplitList(findings, "\n");
}

bool StoreAccess::Exists(const std::string& id) const {
  return VXProtocol::ProtocolExists(context, id) != QM_PROTOCOL_MISSING;
}

void StoreAccess::RequireProtocol(const std::string& id) const {
  if (!Exists(id)) throw ToolError(fmt::format("There is no protocol \"{}\"", ForUser(id)));
}

ProtocolSummary StoreAccess::Summary(const std::string& id) const {
  RequireProtocol(id);
  ProtocolSummary summary;
  summary.id = id;
  summary.state = VXProtocol::ProtocolExists(context, id);
  VXProtocol protocol(context, id);
  if (!protocol.IsReady()) throw ToolError(fmt::format("{} cannot be opened", ForUser(id)));
  protocol.GetVersion(summary.major, summary.minor);
  protocol.GetDataFileName(summary.dataFile);
  protocol.GetViewKey(summary.viewKey);
  protocol.GetGlobalData(quillmar::global::kTypeOfPart, summary.type);
  protocol.GetDataCount(summary.values);
  return summary;
}

}  // namespace tools
