// Inmova.exe: stands for the import wizard. It reads the protocol that describes what to import and
// looks whether a file is named.
#include <string>

#include "hexaplan/host/ProtocolStore.h"
#include "wizard/WizardRun.h"

namespace {

using wizard::Refusal;

constexpr const char kSwitch[] = "/C ";

std::string IdentifierOf(const std::string& parameter) {
  if (parameter.rfind(kSwitch, 0) != 0) throw Refusal("The parameter does not begin with /C");
  return parameter.substr(sizeof kSwitch - 1);
}

void CheckProtocol(const std::string& parameter) {
  const std::string id = IdentifierOf(parameter);
  hexaplan::ProtocolStore store;
  if (!store.Load(wizard::OwnFolder())) throw Refusal("The storage library does not load");
  const auto record = hexaplan::ProtocolRecord::Open(store, id);
  if (!record) throw Refusal("There is no protocol \"" + id + "\"");
  for (const char* keyword : {"Type", "Units"}) {
    if (record->KeyWord("Data", keyword).empty()) {
      throw Refusal(std::string(keyword) + " is missing");
    }
  }
  if (record->KeyWord("Data", "Files") != "1") throw Refusal("Not one file is given");
  if (record->KeyWord("Files", "Item0").empty()) throw Refusal("The file has no name");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  return wizard::Run("Inmova", wizard::kStartedByModule, argumentCount, arguments, CheckProtocol);
}
