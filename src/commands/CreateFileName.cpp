#include "commands/CreateFileName.h"

#include "base/RegistryKey.h"
#include "commands/OptionsCommands.h"
#include "parts/PartFactory.h"

namespace quillmar {
namespace {

constexpr const char* kHelpFile = "\\Quillmar.hlp";

std::string LastLoggedApplication() {
  RegistryKey key;
  key.Create(platform::Hive::CurrentUser, GetModuleRegistryKey(false));
  return key.ReadString("LastLoggedApp");
}

}  // namespace

std::optional<PartTexts> CreateFileName(const PartServices& services,
                                        const std::string& protocolId) {
  SetOptions(services, nullptr, 0, LastLoggedApplication(),
             services.paths.ModuleFolder() + kHelpFile, 0);
  VXProtocol protocol(services.protocols);
  if (!protocol.AttachExisting(protocolId)) return std::nullopt;
  const auto part = CreatePartForProtocol(services, protocol);
  if (!part) return std::nullopt;
  part->BuildCaption();
  const ExtDataPairs pairs = part->BuildExtendedData();
  PartTexts texts{.tags = {}, .values = part->Caption() + "\t"};
  for (int i = 0; i < pairs.Count(); ++i) {
    texts.tags.append("$").append(pairs.Get()[i].name).append("\t");
    texts.values.append(pairs.Get()[i].value).append("\t");
  }
  return texts;
}

}  // namespace quillmar
