// The open protocols of the process, as Keelcomm.dll lends them to this library.
#pragma once

#include "keelcomm/SharedRecords.h"

namespace quillmar::keellink {

// Functions of the Keelcomm.dll of this process, bound by name.
struct RecordAccess {
#define QM_MEMBER(name, result, parameters, names) result(QM_CDECL* name) parameters = nullptr;
  KEELCOMM_RECORD_FUNCTIONS(QM_MEMBER)
#undef QM_MEMBER
};

// The functions of the Keelcomm.dll that is loaded, or of the one beside this library; it stays in
// the process as long as this library does. Null, with a message, when there is none or when it is
// not of this suite's making.
const RecordAccess* FindRecordAccess();

}  // namespace quillmar::keellink
