#include "commands/DataWizard.h"

#include <array>
#include <cstring>

#include "parts/TwoStepRead.h"
#include "platform/Processes.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {
namespace {

constexpr int kUsualDataSize = 100000;      // characters
constexpr std::size_t kSourceSize = 10000;  // NUL included

constexpr const char* kWizardProgram = "DATROVA.EXE";

struct WizardData {
  std::string data;
  std::string source;
};

ReadResult ReadData(const CadDriverTable& driver, WizardData& read) {
  std::array<char, kSourceSize + 1> source{};
  const ReadResult result = ReadInTwoSteps(
      [&](char* buffer, int* size) {
        source.fill('\0');
        return driver.GetDataWD(buffer, size, source.data());
      },
      kUsualDataSize, read.data);
  if (result == ReadResult::Done) {
    read.source.assign(source.data(), ::strnlen(source.data(), kSourceSize));
  }
  return result;
}

bool FillProtocol(VXProtocol& protocol, const WizardRequest& request, const WizardData* data) {
  const char* const section = section::kDataWizard;
  return protocol.PutKeyWordInt(section, "First", request.first) &&
         protocol.PutKeyWordInt(section, "Second", request.second) &&
         protocol.PutKeyWordInt(section, "Third", request.third) &&
         (data == nullptr || (protocol.PutKeyWord(section, "Data", data->data) &&
                              protocol.PutKeyWord(section, "Source", data->source)));
}

bool StartWizard(const PartServices& services, const std::string& protocolId) {
  const std::string folder = services.host.CompanionFolder();
  const std::string program = folder + "\\" + kWizardProgram;
  return platform::StartProgram({.program = program,
                                 .commandLine = "\"" + program + "\" /C " + protocolId,
                                 .folder = folder,
                                 .show = platform::ShowMode::Normal})
      .has_value();
}

void RunWizard(const PartServices& services, const WizardRequest& request, const WizardData* data) {
  VXProtocol protocol(services.protocols);
  if (protocol.CreateNew() == 0) return;
  const std::string protocolId = protocol.GetProtocolID();
  const bool filled = FillProtocol(protocol, request, data);
  // Closed before the wizard, a process of its own, opens it.
  protocol.Close();
  if (filled && StartWizard(services, protocolId)) return;
  VXProtocol::EraseById(services.protocols, protocolId);
  services.errors.ReportError("Cannot start the data wizard", QM_HERE);
}

}  // namespace

void DoWizardOperation(const PartServices& services, const WizardRequest& request) {
  if (!services.driver.GetDataWD) return;
  WizardData data;
  switch (ReadData(services.driver, data)) {
    case ReadResult::Done:
      return RunWizard(services, request, &data);
    case ReadResult::FailedAtOnce:
      return RunWizard(services, request, nullptr);
    case ReadResult::FailedAgain:
      services.driver.StopWD();
  }
}

}  // namespace quillmar
