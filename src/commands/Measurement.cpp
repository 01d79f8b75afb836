#include "commands/Measurement.h"

#include "calclink/NotificationVocabulary.h"
#include "commands/CadWindow.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

Measurement::Measurement(const PartServices& partServices, const IpcLibrary& ipcLibrary)
    : services(partServices), ipc(ipcLibrary) {}

// The CAD may have the value at once and set it before StartMeasure returns.
void Measurement::Request(const std::string& protocolId) {
  // Lets go of the protocol of the request before.
  waiting.emplace(services.protocols, protocolId);
  if (!waiting->IsReady()) return Release();
  std::string unit;
  waiting->GetKeyWord(section::kCallParameters, keyword::kUnit, unit);
  ActivateCad(services);
  services.driver.StartMeasure(unit.c_str());
}

void Measurement::SetValue(double value) {
  if (!waiting || !Reopen()) return;
  const std::string protocolId = waiting->GetProtocolID();
  // The calculation waits for the answer, with or without a value.
  waiting->PutKeyWord(section::kCallParameters, keyword::kMeasuredValue, FormatNumber(value));
  ipc.SendModelessMessage(notification::kMeasured, notification::kMeasuredInteger, protocolId);
}

// Whatever was done with the protocol since the request may have closed it; erased, it stays gone.
bool Measurement::Reopen() {
  const std::string protocolId = waiting->GetProtocolID();
  const int state = VXProtocol::ProtocolExists(services.protocols, protocolId);
  if (state == QM_PROTOCOL_CLOSED) return waiting->Open(protocolId);
  return state != QM_PROTOCOL_MISSING;
}

}  // namespace quillmar
