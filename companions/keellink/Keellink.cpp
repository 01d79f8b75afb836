// The exports of Keellink.dll: every entry point of the link contract, behind the border.
#include "keellink/Border.h"
#include "keellink/LinkFunctions.h"

namespace {
using quillmar::keellink::kBorder;
namespace functions = quillmar::keellink::functions;
}  // namespace

#define EXPORT_LINK(...) QM_BORDER_EXPORT(kBorder, functions, QM_STDCALL, __VA_ARGS__)
QM_LINK_FUNCTIONS(EXPORT_LINK)
