#include "commands/Notifications.h"

#include "calclink/NotificationVocabulary.h"
#include "commands/CadWindow.h"
#include "parts/PartFactory.h"
#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

using namespace notification;

// `reply` is the integer of the notification that answers, where there is one.
struct Notifications::Row {
  int number;
  void (Notifications::*handle)(const std::string& text, int reply);
  int reply = 0;
};

const Notifications::Row Notifications::kRows[] = {
    {kOptimizationEnded, &Notifications::OnOptimizationEnded},
    {kUpdateObject, &Notifications::OnUpdateObject},
    {kOptimizationWillStart, &Notifications::OnOptimizationWillStart},
    {kReplyWanted, &Notifications::OnReplyWanted, kReplyInteger},
    {kMeasurementWanted, &Notifications::OnMeasurementWanted},
    {kReconnect, &Notifications::OnReconnect},
    {kFilesData, &Notifications::OnFilesData, kFilesDataInteger},
    {kFilesDataOfWizard, &Notifications::OnFilesData, kFilesDataOfWizardInteger},
    {kStopWizard, &Notifications::OnStopWizard},
    {kOptionsChanged, &Notifications::OnOptionsChanged},
};

Notifications::Notifications(const PartServices& partServices, CadSession& cadSession,
                             const IpcLibrary& ipcLibrary, Measurement& measure)
    : services(partServices), session(cadSession), ipc(ipcLibrary), measurement(measure) {}

void Notifications::Receive(int number, const std::string& text) {
  for (const Row& row : kRows) {
    if (row.number == number) return (this->*row.handle)(text, row.reply);
  }
}

void Notifications::OnOptimizationEnded(const std::string&, int) {
  session.noActivation = false;
  services.driver.OptimEnded();
}

void Notifications::OnOptimizationWillStart(const std::string&, int) {
  session.noActivation = true;
  services.driver.OptimWillStart();
}

void Notifications::OnUpdateObject(const std::string& protocolId, int) {
  VXProtocol protocol(services.protocols, protocolId);
  if (!protocol.IsReady()) return;
  if (const auto part = CreatePartForProtocol(services, protocol)) part->Update();
}

// The caller only wants to hear that somebody is there.
void Notifications::OnReplyWanted(const std::string&, int reply) {
  ipc.SendModelessMessage(kReply, reply, "");
}

void Notifications::OnMeasurementWanted(const std::string& protocolId, int) {
  measurement.Request(protocolId);
}

// The protocol that lists the others was made for this notification and is of no further use.
void Notifications::OnReconnect(const std::string& protocolId, int) {
  std::string list;
  {
    VXProtocol protocol(services.protocols, protocolId);
    if (!protocol.IsReady()) return;
    protocol.GetKeyWord(section::kMain, keyword::kProtocols, list);
  }
  VXProtocol::EraseById(services.protocols, protocolId);
  for (const std::string& id : SplitKeepingEmpty(list, ',')) Reconnect(id);
}

void Notifications::Reconnect(const std::string& protocolId) {
  std::string connection;
  {
    VXProtocol protocol(services.protocols, protocolId);
    if (!protocol.IsReady() || !protocol.MakeReference(connection, Markers::Standard)) return;
  }
  services.driver.ConnectProtocol(protocolId.c_str(), connection.c_str());
}

void Notifications::OnFilesData(const std::string& protocolId, int reply) {
  if (!services.driver.GetFilesData) return;
  ActivateCad(services);
  {
    VXProtocol protocol(services.protocols, protocolId);
    if (!protocol.IsReady()) return;
    std::string inOutFile;
    protocol.GetKeyWord(section::kData, keyword::kInOutFile, inOutFile);
    int type = 0;
    protocol.GetKeyWordInt(section::kData, keyword::kType, type);
    const int result = services.driver.GetFilesData(inOutFile.c_str(), type);
    protocol.PutKeyWordInt(section::kData, keyword::kReturn, result);
  }
  ipc.SendModelessMessage(kFilesDataDone, reply, protocolId);
}

void Notifications::OnStopWizard(const std::string&, int) { services.driver.StopWD(); }

void Notifications::OnOptionsChanged(const std::string&, int) {
  services.options.ReadConfiguration();
}

}  // namespace quillmar
