// Functions that Keelcomm.dll exports for Keellink.dll and Tessio.dll, about the protocols that are
// open in the process, and for the tools that look after a store, about the database. Nobody else
// calls them, and they are no border of the suite.
#pragma once

#include "quillmar/Conventions.h"

/* X(name, result, (parameters), (argument names)). Results are 1, or 0 after a failure and for a
 * protocol that is not open. A text that is given out is valid until the next call.
 *
 * Keelcomm_GetText         value of a keyword; 0 when there is none.
 * Keelcomm_PutText         writes a keyword; a null value erases it.
 * Keelcomm_CountTexts      number of keywords of a section.
 * Keelcomm_GetTextAt       keyword and value at an index from 0.
 * Keelcomm_MakeProtocolId  an identifier that no protocol has.
 * Keelcomm_Save            stores what was written to the protocol; it stays open.
 * Keelcomm_Refresh         takes in what other processes have stored since it was opened.
 * Keelcomm_ListProtocols   identifiers of all stored protocols, in the order of their making.
 * Keelcomm_CheckDatabase   what is wrong with the database, a line each; empty when it is whole.
 */
/* clang-format off */
#define KEELCOMM_RECORD_FUNCTIONS(X)                                                             \
  X(Keelcomm_GetText, int,                                                                       \
    (const char* protocolId, const char* section, const char* keyword, const char** value),      \
    (protocolId, section, keyword, value))                                                       \
  X(Keelcomm_PutText, int,                                                                       \
    (const char* protocolId, const char* section, const char* keyword, const char* value),       \
    (protocolId, section, keyword, value))                                                       \
  X(Keelcomm_CountTexts, int, (const char* protocolId, const char* section, int* count),         \
    (protocolId, section, count))                                                                \
  X(Keelcomm_GetTextAt, int,                                                                     \
    (const char* protocolId, const char* section, int index, const char** keyword,               \
     const char** value),                                                                        \
    (protocolId, section, index, keyword, value))                                                \
  X(Keelcomm_MakeProtocolId, int, (const char** protocolId), (protocolId))                 \
  X(Keelcomm_Save, int, (const char* protocolId), (protocolId))                                  \
  X(Keelcomm_Refresh, int, (const char* protocolId), (protocolId))                               \
  X(Keelcomm_ListProtocols, int, (const char* const** identifiers, int* count),                  \
    (identifiers, count))                                                                        \
  X(Keelcomm_CheckDatabase, int, (const char** findings), (findings))
/* clang-format on */
