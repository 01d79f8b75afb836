/** @file
 * Entry points of the bolted-connection library `QmarBC.dll` and of the window helper
 * `vxfwnd.dll`. Every one of them may be missing; Quillmar then goes without it.
 *
 * Both libraries are old; callers do not rely on who removes the arguments.
 */
#ifndef QUILLMAR_BOLTEDCONNECTIONS_H
#define QUILLMAR_BOLTEDCONNECTIONS_H

#include "quillmar/Conventions.h"

/** File name of the library. */
#define QM_BOLTED_CONNECTION_LIBRARY "QmarBC.dll"
/** File name of the library that brings windows to the front. */
#define QM_FOREGROUND_LIBRARY "vxfwnd.dll"

/** X(name, result, (parameters), (argument names)).
 *
 * InsertBoltedConnection  puts the connection of the (closed) protocol into the CAD.
 * EditBoltedConnection    edits it.
 * EditBoltedConnection2   edits it after a recalculation; the two integers come from the CAD.
 * PrepareMCWProtocol      prepares a connection's protocol; bound, never called.
 */
/* clang-format off */
#define QM_BOLTED_CONNECTION_FUNCTIONS(X)                                                         \
  X(InsertBoltedConnection, int, (const char* protocolId), (protocolId))                          \
  X(EditBoltedConnection, int, (const char* protocolId), (protocolId))                            \
  X(EditBoltedConnection2, int, (const char* protocolId, int first, int second),                  \
    (protocolId, first, second))                                                                  \
  X(PrepareMCWProtocol, int, (const char* protocolId), (protocolId))

/** McSetForegroundWindow  brings a window of another process to the front. */
#define QM_FOREGROUND_FUNCTIONS(X)                                                                \
  X(McSetForegroundWindow, int, (QmWindow window), (window))
/* clang-format on */

#endif /* QUILLMAR_BOLTEDCONNECTIONS_H */
