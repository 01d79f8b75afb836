/** @file
 * Entry points of the storage library `Keelcomm.dll`.
 *
 * The library keeps protocols: keyed records of sections with keywords, global data items, data
 * parameters (name, value, unit), a buffer of texts, a version and a few named texts. Quillmar
 * binds the entry points by name and never links the library.
 *
 * All entry points use the standard calling convention (the callee removes its arguments). The
 * first argument is the identifier of the protocol, at most 25 characters. The result is nonzero
 * for success and 0 for failure, unless stated otherwise. Indices and counts of data items and
 * keys are 16-bit.
 *
 * Output buffers, written `growing` below: the caller passes a text of N blanks followed by a
 * NUL (N + 1 writable bytes, N = 1024 on the first try). The library takes the length of the
 * blanks as its capacity, writes at most N characters and a NUL. A caller that gets N - 1
 * characters or more back asks again with N + 1024; all growing buffers of one call have the
 * same N. A buffer that the library leaves untouched still holds the blanks.
 */
#ifndef QUILLMAR_STORAGE_H
#define QUILLMAR_STORAGE_H

#include "quillmar/Conventions.h"
#include "quillmar/StringList.h"

/** File name of the library. */
#define QM_STORAGE_LIBRARY "Keelcomm.dll"

/** Size in bytes of the identifier buffers of Com_OpenProtocol and Com_CopyProtocol, NUL
 * included. */
#define QM_PROTOCOL_ID_BUFFER 260
/** Number of blanks that ask for a new protocol. */
#define QM_NEW_PROTOCOL_BLANKS 25

/** @name Results of Com_IsProtocolExists
 * @{ */
#define QM_PROTOCOL_MISSING 0             /**< no such protocol */
#define QM_PROTOCOL_OPEN 1                /**< open in this process */
#define QM_PROTOCOL_CLOSED 2              /**< in the store, open nowhere */
#define QM_PROTOCOL_HELD_BY_CALCULATION 3 /**< open in another process of the suite */
/** @} */

/** X(name, result, (parameters), (argument names)), in the order of binding.
 *
 * Com_OpenProtocol      opens `protocolId` (buffer of 260 bytes, in/out) and makes it when it
 *                       does not exist; 25 blanks ask for a new protocol, whose identifier is
 *                       written over them. 1 = opened, anything else = failure.
 * Com_GetVersion,
 * Com_SetVersion        the layout version of the protocol as a (major, minor) pair.
 * Com_IsProtocolExists  0 missing, 1 open in this process, 2 stored and closed, 3 held open by a
 *                       calculation window.
 * Com_CloseProtocol     closes; what was written is durable once this returned success.
 * Com_EraseProtocol     removes the protocol from the store.
 * Com_GetBuffer         `list` receives the protocol's buffer, a list owned by the library and
 *                       valid until the next call that concerns the same protocol.
 * Com_PutBuffer         copies the caller's list into the protocol's buffer.
 * Com_GetDataFile       data-file name (growing).
 * Com_GetOwnerHWND      `window` receives the window of the calculation that holds the protocol
 *                       open (only for protocols of state 3).
 * Com_GetKeyWord        value of a keyword of a section (growing); 0 when there is none.
 * Com_PutKeyWord        writes a keyword; a null value erases it.
 * Com_GetKeyList        keywords of a section joined by ";" (growing). With a null `list` the
 *                       result is their number.
 * Com_GetOneKey         keyword and value at a 16-bit index (both growing).
 * Com_EraseSection      removes a section with its keywords.
 * Com_GetGlobalData,
 * Com_PutGlobalData     one global item (value growing).
 * Com_*ModelID, Com_*PartKey, Com_*ViewKey, Com_*Standard
 *                       single texts of the protocol (reads growing).
 * Com_GetDataParam      value and unit of a data parameter (both growing); 0 when missing.
 * Com_PutDataParam      writes a data parameter, making it when missing.
 * Com_GetDataCount      number of data parameters.
 * Com_GetDataItem       name, value and unit (all growing) of data parameter `index`, from 1.
 * Com_IsSuperProtocol   `answer` becomes nonzero when the protocol lists member protocols.
 * Com_GetProtocolList   member identifiers, each followed by ";" (growing).
 * Com_GetProtocolCount  number of members.
 * Com_GetProtocol,
 * Com_PutProtocol,
 * Com_RemoveProtocol    one member by its name (read growing).
 * Com_CopyProtocol      copies `sourceId` under a new identifier, which is written over the 25
 *                       blanks in `newId` (buffer of 260 bytes). Optional: a library without it
 *                       is served by copying the buffer.
 */
/* clang-format off */
#define QM_STORAGE_FUNCTIONS(X)                                                                   \
  X(Com_OpenProtocol, short, (char* protocolId), (protocolId))                                    \
  X(Com_GetVersion, short, (const char* protocolId, int* major, int* minor),                      \
    (protocolId, major, minor))                                                                   \
  X(Com_SetVersion, short, (const char* protocolId, int major, int minor),                        \
    (protocolId, major, minor))                                                                   \
  X(Com_IsProtocolExists, short, (const char* protocolId), (protocolId))                          \
  X(Com_CloseProtocol, short, (const char* protocolId), (protocolId))                             \
  X(Com_EraseProtocol, short, (const char* protocolId), (protocolId))                             \
  X(Com_GetBuffer, short, (const char* protocolId, QmStringList** list), (protocolId, list))      \
  X(Com_PutBuffer, short, (const char* protocolId, QmStringList* list), (protocolId, list))       \
  X(Com_GetDataFile, short, (const char* protocolId, char* fileName), (protocolId, fileName))     \
  X(Com_GetOwnerHWND, short, (const char* protocolId, QmWindow* window), (protocolId, window))    \
  X(Com_GetKeyWord, short,                                                                        \
    (const char* protocolId, const char* section, const char* keyword, char* value),              \
    (protocolId, section, keyword, value))                                                        \
  X(Com_PutKeyWord, short,                                                                        \
    (const char* protocolId, const char* section, const char* keyword, const char* value),        \
    (protocolId, section, keyword, value))                                                        \
  X(Com_GetKeyList, short, (const char* protocolId, const char* section, char* list),             \
    (protocolId, section, list))                                                                  \
  X(Com_GetOneKey, short, (const char* protocolId, short index, char* keyword, char* value),      \
    (protocolId, index, keyword, value))                                                          \
  X(Com_EraseSection, short, (const char* protocolId, const char* section),                       \
    (protocolId, section))                                                                        \
  X(Com_GetGlobalData, short, (const char* protocolId, const char* item, char* value),            \
    (protocolId, item, value))                                                                    \
  X(Com_PutGlobalData, short, (const char* protocolId, const char* item, const char* value),      \
    (protocolId, item, value))                                                                    \
  X(Com_PutModelID, short, (const char* protocolId, const char* modelId), (protocolId, modelId))  \
  X(Com_GetModelID, short, (const char* protocolId, char* modelId), (protocolId, modelId))        \
  X(Com_PutPartKey, short, (const char* protocolId, const char* partKey), (protocolId, partKey))  \
  X(Com_GetPartKey, short, (const char* protocolId, char* partKey), (protocolId, partKey))        \
  X(Com_PutViewKey, short, (const char* protocolId, const char* viewKey), (protocolId, viewKey))  \
  X(Com_GetViewKey, short, (const char* protocolId, char* viewKey), (protocolId, viewKey))        \
  X(Com_PutStandard, short, (const char* protocolId, const char* standard),                       \
    (protocolId, standard))                                                                       \
  X(Com_GetStandard, short, (const char* protocolId, char* standard), (protocolId, standard))     \
  X(Com_GetDataParam, short, (const char* protocolId, const char* name, char* value, char* unit), \
    (protocolId, name, value, unit))                                                              \
  X(Com_PutDataParam, short,                                                                      \
    (const char* protocolId, const char* name, const char* value, const char* unit),              \
    (protocolId, name, value, unit))                                                              \
  X(Com_GetDataCount, short, (const char* protocolId, short* count), (protocolId, count))         \
  X(Com_GetDataItem, short,                                                                       \
    (const char* protocolId, short index, char* name, char* value, char* unit),                   \
    (protocolId, index, name, value, unit))                                                       \
  X(Com_IsSuperProtocol, short, (const char* protocolId, short* answer), (protocolId, answer))    \
  X(Com_GetProtocolList, short, (const char* protocolId, char* list), (protocolId, list))         \
  X(Com_GetProtocolCount, short, (const char* protocolId, short* count), (protocolId, count))     \
  X(Com_GetProtocol, short, (const char* protocolId, const char* memberName, char* memberId),     \
    (protocolId, memberName, memberId))                                                           \
  X(Com_PutProtocol, short,                                                                       \
    (const char* protocolId, const char* memberName, const char* memberId),                       \
    (protocolId, memberName, memberId))                                                           \
  X(Com_RemoveProtocol, short, (const char* protocolId, const char* memberName),                  \
    (protocolId, memberName))                                                                     \
  X(Com_CopyProtocol, short, (const char* sourceId, char* newId), (sourceId, newId))
/* clang-format on */

/** Name under which the library exports its owner-window query. */
#define QM_OWNER_WINDOW_QUERY "Com_GetOwnerHWND"
/** Spellings of it that are bound when a library does not have that one. */
#define QM_OWNER_WINDOW_QUERY_SPELLINGS \
  { "Com_GetOwnerHwnd", "Com_GetOwnerHWnd", "Com_GetOwnerWindow", "Com_GetOwnerWnd" }

#endif /* QUILLMAR_STORAGE_H */
