// The exports of Tessio.dll: the entry points of the inter-process contract behind the border, and
// those for receivers.
#include "recorder/Recorder.h"
#include "tessio/IpcFunctions.h"

namespace {
namespace functions = quillmar::tessio::functions;
using quillmar::recorder::Kind;
constexpr quillmar::recorder::Border border{"Tessio", Kind::Notification};
}  // namespace

#define EXPORT_IPC(name, convention, ...) \
  QM_BORDER_EXPORT(border, functions, convention, name, __VA_ARGS__)
QM_IPC_FUNCTIONS(EXPORT_IPC)

#define EXPORT_RECEIVER_FUNCTION(name, result, parameters, names) \
  QM_EXTERN_C QM_EXPORT result QM_CDECL name parameters {         \
    try {                                                         \
      return functions::name names;                               \
    } catch (...) {                                               \
      return 0;                                                   \
    }                                                             \
  }
TESSIO_RECEIVER_FUNCTIONS(EXPORT_RECEIVER_FUNCTION)
