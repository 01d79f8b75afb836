/** @file
 * Entry points of the inter-process library `Tessio.dll`, through which the programs of the suite
 * send each other numbered notifications.
 *
 * Parameters of a notification do not travel in it: the sender writes them into section
 * "TessioCallParam" of the protocol that the text names, the receiver reads them there.
 */
#ifndef QUILLMAR_IPC_H
#define QUILLMAR_IPC_H

#include "quillmar/Conventions.h"

/** File name of the library. */
#define QM_IPC_LIBRARY "Tessio.dll"

/** X(name, convention, result, (parameters), (argument names)), in the order of binding; all
 * twelve must be there, the binding stops at the first that is missing.
 *
 * LoginToCom           registers this process: mode, the calling module and its name, an integer
 *                      (0), and an output that receives the library's login result.
 * LoginToCom2          the same with one argument more; the callee removes the arguments.
 * LoginToComBasic      registers without a message window.
 * SendModalMessage     sends notification `number` with an integer and a text (at most 259
 *                      characters) and waits until the receivers handled it; nonzero when sent.
 * SendModelessMessage  the same without waiting.
 * IsProcessRunning     nonzero when a program of that name is logged in.
 * CreateCJCall, AddCJCallParam, CallCJFunction, AddCJCallParamPtr2, AddCJCallParam2,
 * GetCJCallParam       calls with parameters between programs; Quillmar binds and never calls
 *                      them.
 */
/* clang-format off */
#define QM_IPC_FUNCTIONS(X)                                                                       \
  X(LoginToCom, QM_CDECL, int,                                                                    \
    (int mode, QmModule module, const char* moduleName, int reserved, int* result),               \
    (mode, module, moduleName, reserved, result))                                                 \
  X(LoginToCom2, QM_STDCALL, int,                                                                 \
    (int mode, QmModule module, const char* moduleName, int reserved, int* result, int options),  \
    (mode, module, moduleName, reserved, result, options))                                        \
  X(LoginToComBasic, QM_CDECL, int, (int mode, const char* moduleName), (mode, moduleName))       \
  X(SendModalMessage, QM_CDECL, int, (int number, int value, const char* text),                   \
    (number, value, text))                                                                        \
  X(SendModelessMessage, QM_CDECL, int, (int number, int value, const char* text),                \
    (number, value, text))                                                                        \
  X(IsProcessRunning, QM_CDECL, int, (const char* programName), (programName))                    \
  X(CreateCJCall, QM_CDECL, int, (const char* functionName), (functionName))                      \
  X(AddCJCallParam, QM_CDECL, int, (int call, int kind, const void* value, int size),             \
    (call, kind, value, size))                                                                    \
  X(CallCJFunction, QM_CDECL, int,                                                                \
    (int call, const char* programName, int wait, int timeout, int* result),                      \
    (call, programName, wait, timeout, result))                                                   \
  X(AddCJCallParamPtr2, QM_CDECL, int, (int call, int kind, void* value, int size),               \
    (call, kind, value, size))                                                                    \
  X(AddCJCallParam2, QM_CDECL, int, (int call, int kind, const void* value), (call, kind, value)) \
  X(GetCJCallParam, QM_CDECL, int, (int call, int index, void* value, int size),                  \
    (call, index, value, size))
/* clang-format on */

#endif /* QUILLMAR_IPC_H */
