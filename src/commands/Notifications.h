// Notifications that the calculation applications send to the CAD side.
#pragma once

#include <string>

#include "calclink/IpcLibrary.h"
#include "commands/Measurement.h"
#include "parts/PartServices.h"

namespace quillmar {

class Notifications {
 public:
  Notifications(const PartServices& services, CadSession& session, const IpcLibrary& ipc,
                Measurement& measurement);

  // `text` is a protocol identifier where the notification has parameters. Numbers that are not
  // known do nothing; failures are not answered.
  void Receive(int number, const std::string& text);

 private:
  struct Row;
  static const Row kRows[];

  void OnOptimizationEnded(const std::string& text, int reply);
  void OnUpdateObject(const std::string& protocolId, int reply);
  void OnOptimizationWillStart(const std::string& text, int reply);
  void OnReplyWanted(const std::string& text, int reply);
  void OnMeasurementWanted(const std::string& protocolId, int reply);
  void OnReconnect(const std::string& protocolId, int reply);
  void OnFilesData(const std::string& protocolId, int reply);
  void OnStopWizard(const std::string& text, int reply);
  void OnOptionsChanged(const std::string& text, int reply);

  // Gives the CAD object of the protocol its reference text anew.
  void Reconnect(const std::string& protocolId);

  const PartServices& services;
  CadSession& session;
  const IpcLibrary& ipc;
  Measurement& measurement;
};

}  // namespace quillmar
