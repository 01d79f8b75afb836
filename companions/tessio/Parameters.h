// The parameters of a notification: they stand in the protocol that its text names, which the
// sender and the receiver may both have open.
#pragma once

#include "tessio/Notifications.h"

namespace quillmar::tessio {

// Before sending: makes what this process wrote to the protocol visible to other processes.
void StoreParameters(const Notification& notification);

// Before delivering what another process sent: makes what it wrote visible here.
void RefreshParameters(const Notification& notification);

}  // namespace quillmar::tessio
