#include "commands/OptionsCommands.h"

#include "bom/TagVocabulary.h"
#include "options/OptionsSheet.h"

namespace quillmar {
namespace {

constexpr int kOptionsTitle = 1;

SheetOffers MakeOffers(const PartServices& services) {
  SheetOffers offers;
  for (const OfferedTag& tag : OfferedTags(services.paths.ModuleFolder() + "\\ExtData.ini")) {
    offers.tags.push_back("%" + tag.token + "%");
  }
  offers.hostIniFile = services.paths.GetSuiteFolder() + "\\hexaplan.ini";
  offers.tagNames = services.tags.Keys();
  for (std::string& name : HostExtendedDataNames(offers.hostIniFile)) {
    offers.tagNames.push_back(std::move(name));
  }
  return offers;
}

}  // namespace

void SetOptions(const PartServices& services, const void* const* pages, int count,
                const std::string& applicationKey, const std::string& helpFile,
                unsigned helpContext) {
  SheetExtras extras = CopyPages(pages, count, [&](int index) {
    services.errors.ReportError("Options page " + std::to_string(index) + " is not a page",
                                QM_HERE);
  });
  extras.helpFile = helpFile;
  extras.helpContext = helpFile.empty() ? 0 : helpContext;
  services.options.Replace(services.texts.GetText(kOptionsTitle),
                           GetModuleRegistryKey(true) + applicationKey, std::move(extras));
}

bool ShowOptionsDialog(const PartServices& services) {
  return ShowOptionsSheet(
      services.options, services.texts, MakeOffers(services),
      {.resources = services.paths.Self(), .owner = MainWindow(services.driver)});
}

}  // namespace quillmar
