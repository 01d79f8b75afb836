// What happens when the host says that a calculation is done: for each of its protocols a CAD
// object is inserted or updated, and the protocol's bookkeeping is brought up to date.
#pragma once

#include <memory>
#include <string>

#include "parts/VXPart.h"

namespace quillmar {

class CallbackDispatcher {
 public:
  explicit CallbackDispatcher(const PartServices& services);

  // Asks the host what happened to which protocols and handles them one after the other.
  void OnCallback();
  // Handles one protocol; `code` is one of QmCallbackCode or a number without a CAD action.
  void Dispatch(int code, const std::string& protocolId);

 private:
  // What a first look at the protocol tells.
  struct FirstLook {
    bool letMeKnow = false;         // the host waits for the completion marker
    bool boltedConnection = false;  // the bolted-connection library inserts it
  };
  struct Outcome {
    bool succeeded = false;
    bool updateFailed = false;
  };

  FirstLook LookAt(const std::string& protocolId);
  void InsertBoltedConnection(const std::string& protocolId);
  void DrawFromReference(const std::string& protocolId);
  void HandleReference(const std::string& reference);
  void Perform(int code, const std::string& protocolId, bool letMeKnow);
  std::unique_ptr<VXPart> PartFor(VXProtocol& protocol);
  void ReconnectWizardProtocol(VXProtocol& protocol);
  void Reconnect(VXProtocol& protocol, const std::string& protocolId);
  int WithoutNewView(int code, VXProtocol& protocol);
  Outcome Act(int code, VXProtocol& protocol, VXPart& part);
  Outcome ActOnClipboardOrType(VXProtocol& protocol, VXPart& part);
  void BringUpToDate(VXProtocol& protocol, const std::string& protocolId);
  void NoteFailure(VXProtocol& protocol, bool updateFailed);
  void NoteSuccess(VXProtocol& protocol);
  void WriteCompletionMarker(const std::string& protocolId);
  // Records a step that failed as a whole.
  bool Fail(const char* step, const SourceStamp& source);

  const PartServices& services;
};

}  // namespace quillmar
