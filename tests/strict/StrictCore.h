/* Query and control functions of the strict companion set.
 *
 * The set is a second suite of companions that gives a caller nothing beyond what the binary
 * contracts promise and checks what they demand. All its libraries share one core in the process,
 * C:\Strictcad\Strictcore.dll, which keeps the protocols and the links, the journal of calls and
 * of broken promises (violations), and the answers that a test laid down.
 *
 * Texts that a function returns belong to the core and live until the next Strict_Reset.
 */
#ifndef QUILLMAR_TESTS_STRICTCORE_H
#define QUILLMAR_TESTS_STRICTCORE_H

#include "quillmar/Conventions.h"

#define STRICT_CORE_FOLDER "Strictcad"
#define STRICT_CORE_LIBRARY "Strictcore.dll"

/* X(name, result, (parameters), (argument names)).
 *
 * Strict_Reset            forgets protocols, links, journal and answers.
 *
 * Strict_BeginCall        starts a journal entry; its number. For the libraries of the set.
 * Strict_AddArgument      adds a text to it.
 * Strict_EndCall          closes it with the result; the calls of one entry stay together even
 *                         when it called out and was entered again.
 * Strict_Violate          records a broken promise.
 *
 * Strict_CallCount        entries so far.
 * Strict_CallFunction     name of the function of entry `call` (from 0).
 * Strict_CallArgumentCount, Strict_CallArgument
 *                         its arguments as texts: numbers in decimal, "(null)" for a null pointer,
 *                         a growing buffer as its length in brackets ("[1024]"), extended data as
 *                         "name=value" lines, other outputs as "out".
 * Strict_CallResult       what it returned; 0 while it has not returned.
 * Strict_ViolationCount, Strict_Violation
 *                         broken promises so far, as texts that name function and promise.
 *
 * Strict_SetAnswer        lays an answer down; null takes it back. Keys:
 *                           "<function>"                    result; a storage or link function
 *                                                           given 0 fails without an effect
 *                           "<function>(<text>)"            result when the first text argument of
 *                                                           a driver function is <text>
 *                           "<function>.<argument>"         what an output argument receives
 *                           "<function>.again"              given 0, the second call for a list
 *                                                           fails too
 *                           "<function>(<text>).<argument>" the same when the function's first
 *                                                           text argument is <text>
 * Strict_Answer           the answer of a key, null when none was laid down.
 * Strict_SetVisitor       `visitor` is told of every call when it begins and may call the library
 *                         under test; where its answer is not 0 the call fails without an effect.
 *                         Null takes it back, Strict_Reset too.
 * Strict_CallRefused      whether a visitor refused entry `call`. For the libraries of the set.
 *
 * Strict_HoldByCalculation  makes the protocol one that a calculation holds open; `window` is what
 *                         the owner-window query answers.
 * Strict_SetDataFile      what Com_GetDataFile answers for a protocol.
 * Strict_OpenProtocols    number of protocols that this process has open.
 * Strict_StoredProtocols  number of protocols in the store, open ones included.
 */
typedef int(QM_CDECL* StrictVisitor)(const char* function);

/* clang-format off */
#define STRICT_CORE_FUNCTIONS(X)                                                                  \
  X(Strict_Reset, void, (void), ())                                                               \
  X(Strict_BeginCall, int, (const char* function), (function))                                    \
  X(Strict_AddArgument, void, (int call, const char* text), (call, text))                         \
  X(Strict_EndCall, void, (int call, int result), (call, result))                                 \
  X(Strict_Violate, void, (const char* function, const char* promise), (function, promise))       \
  X(Strict_CallCount, int, (void), ())                                                            \
  X(Strict_CallFunction, const char*, (int call), (call))                                         \
  X(Strict_CallArgumentCount, int, (int call), (call))                                            \
  X(Strict_CallArgument, const char*, (int call, int argument), (call, argument))                 \
  X(Strict_CallResult, int, (int call), (call))                                                   \
  X(Strict_ViolationCount, int, (void), ())                                                       \
  X(Strict_Violation, const char*, (int violation), (violation))                                  \
  X(Strict_SetAnswer, void, (const char* key, const char* answer), (key, answer))                 \
  X(Strict_Answer, const char*, (const char* key), (key))                                         \
  X(Strict_SetVisitor, void, (StrictVisitor visitor), (visitor))                                   \
  X(Strict_CallRefused, int, (int call), (call))                                                  \
  X(Strict_HoldByCalculation, void, (const char* protocolId, QmWindow window),                    \
    (protocolId, window))                                                                         \
  X(Strict_SetDataFile, void, (const char* protocolId, const char* name), (protocolId, name))     \
  X(Strict_OpenProtocols, int, (void), ())                                                        \
  X(Strict_StoredProtocols, int, (void), ())
/* clang-format on */

#endif /* QUILLMAR_TESTS_STRICTCORE_H */
