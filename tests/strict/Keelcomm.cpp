// The strict storage library.
#include "Forward.h"
#include "quillmar/Storage.h"

QM_STORAGE_FUNCTIONS(STRICT_FORWARD)
