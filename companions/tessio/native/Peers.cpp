#include "tessio/Peers.h"

namespace quillmar::tessio {

void JoinPeers(const std::string&) {}

void SendToPeers(const Notification&, bool) {}

bool IsPeerRunning(const std::string&) { return false; }

}  // namespace quillmar::tessio
