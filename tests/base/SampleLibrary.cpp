// A library that has a path, and nothing else.
#include "quillmar/Conventions.h"

QM_EXTERN_C QM_EXPORT int SampleFunction(void);

int SampleFunction(void) { return 1; }
