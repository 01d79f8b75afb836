// How a program of the suite receives notifications: two functions that Tessio.dll exports beside
// those of its contract. Look them up by name.
#pragma once

#include "quillmar/Conventions.h"

/* Called on the thread that subscribed, in the order of sending: for a modal notification while the
 * sender waits, for a modeless one later from the thread's message loop. `text` has at most 259
 * characters and is valid during the call. The result is not used. */
typedef int(QM_CDECL* TessioReceiver)(void* context, int number, int value, const char* text);

/* X(name, result, (parameters), (argument names)).
 *
 * Tessio_Subscribe    gives the notifications of every program, this one included, to `receiver`;
 *                     the result is a number for Tessio_Unsubscribe, 0 after a failure. A program
 *                     that wants those of other processes logs in before (LoginToCom).
 * Tessio_Unsubscribe  ends that; 0 for an unknown number. Allowed inside a receiver.
 */
/* clang-format off */
#define TESSIO_RECEIVER_FUNCTIONS(X)                                                           \
  X(Tessio_Subscribe, int, (TessioReceiver receiver, void* context), (receiver, context))      \
  X(Tessio_Unsubscribe, int, (int subscription), (subscription))
/* clang-format on */
