// The other processes that are logged in. One backend a target: on the native target all programs
// of the suite live in one process, so there are none.
#pragma once

#include <string>

#include "tessio/Notifications.h"

namespace quillmar::tessio {

// Makes this process reachable under a program name; what comes in goes to Notifications. Called
// once or again under another name, on the thread that receives.
void JoinPeers(const std::string& program);

// Sends to every other process; waits until they have handled it, or for a modeless one until they
// have taken it. A process that does not answer within two seconds is passed over.
void SendToPeers(const Notification& notification, bool isModal);

bool IsPeerRunning(const std::string& program);

}  // namespace quillmar::tessio
