#include "platform/native/AttachRefused.h"

#include "quillmar/Conventions.h"

QM_EXTERN_C QM_EXPORT int QmAttachRefused(void);
int QmAttachRefused(void) { return quillmar::platform::AttachRefused() ? 1 : 0; }
