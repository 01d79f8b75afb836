// vxfwnd.dll: brings windows of other processes to the front.
#include "platform/Messages.h"
#include "quillmar/BoltedConnections.h"
#include "recorder/Recorder.h"

namespace {

constexpr quillmar::recorder::Border border{"vxfwnd", quillmar::recorder::Kind::Window};

}  // namespace

namespace quillmar::vxfwnd {
namespace {

int McSetForegroundWindow(QmWindow window) {
  if (!platform::IsLiveWindow(window)) return 0;
  platform::BringToForeground(window);
  return 1;
}

}  // namespace
}  // namespace quillmar::vxfwnd

#define EXPORT_FOREGROUND(...) QM_BORDER_EXPORT(border, quillmar::vxfwnd, QM_CDECL, __VA_ARGS__)
QM_FOREGROUND_FUNCTIONS(EXPORT_FOREGROUND)
