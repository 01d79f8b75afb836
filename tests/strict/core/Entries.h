// The storage and link functions as the core exports them: named like the contract's with "Strict_"
// in front, with plain results, in the C convention. Keelcomm.dll and Keellink.dll only pass calls
// on to them.
#pragma once

#include "quillmar/Links.h"
#include "quillmar/Storage.h"

#define STRICT_DECLARE_ENTRY(name, result, parameters, arguments) \
  QM_EXTERN_C QM_EXPORT result QM_CDECL Strict_##name parameters;
QM_STORAGE_FUNCTIONS(STRICT_DECLARE_ENTRY)
QM_LINK_FUNCTIONS(STRICT_DECLARE_ENTRY)
#undef STRICT_DECLARE_ENTRY
