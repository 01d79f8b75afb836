#include "Contract.h"

const bool quillmar::contract::kStrictCompanions = false;
