// The exports of Keelcomm.dll: every entry point of the storage contract, behind the border.
#include "keelcomm/Failures.h"
#include "keelcomm/StorageFunctions.h"

namespace quillmar::keelcomm::guarded {
namespace {

#define GUARDED_FUNCTION(name, result, parameters, names)              \
  result name parameters {                                             \
    return Guarded([&]() -> result { return functions::name names; }); \
  }
QM_STORAGE_FUNCTIONS(GUARDED_FUNCTION)

}  // namespace
}  // namespace quillmar::keelcomm::guarded

namespace {
using quillmar::keelcomm::kBorder;
namespace guarded = quillmar::keelcomm::guarded;
}  // namespace

#define EXPORT_STORAGE(...) QM_BORDER_EXPORT(kBorder, guarded, QM_STDCALL, __VA_ARGS__)
QM_STORAGE_FUNCTIONS(EXPORT_STORAGE)
