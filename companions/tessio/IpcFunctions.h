// The entry points of the inter-process library, without their border.
#pragma once

#include "quillmar/Ipc.h"
#include "tessio/Receivers.h"

namespace quillmar::tessio::functions {

#define QM_DECLARE(name, convention, result, parameters, names) result name parameters;
QM_IPC_FUNCTIONS(QM_DECLARE)
#undef QM_DECLARE

#define QM_DECLARE(name, result, parameters, names) result name parameters;
TESSIO_RECEIVER_FUNCTIONS(QM_DECLARE)
#undef QM_DECLARE

}  // namespace quillmar::tessio::functions
