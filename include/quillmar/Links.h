/** @file
 * Entry points of the link library `Keellink.dll`, which keeps links between protocols.
 *
 * All use the standard calling convention. Results are nonzero for success and 0 for failure;
 * the two counts are 32-bit counts. `growing` buffers follow the rule of Storage.h. Links are
 * numbered from 1 and also addressed by a link name.
 *
 * An incoming link has two texts and two integers (an enable state and a level). A second text
 * that begins with "#" makes it a parameter link: a parameter takes its value from the
 * expression after the "#"; any other incoming link refers to a protocol.
 */
#ifndef QUILLMAR_LINKS_H
#define QUILLMAR_LINKS_H

#include "quillmar/Conventions.h"

/** File name of the library. */
#define QM_LINK_LIBRARY "Keellink.dll"

/** X(name, result, (parameters), (argument names)), in the order of binding.
 *
 * Link_CreateUniquePID         a new protocol identifier (growing).
 * Link_GetLinksFromCount       number of incoming links.
 * Link_GetLinkFrom             the two texts (growing) of incoming link `index`, and its enable
 *                              state and level. A library may know only the first four
 *                              arguments: callers set both integers to 0 first and do not rely
 *                              on the callee to remove all six arguments.
 * Link_GetLinkFrom2            the second text of the incoming link `linkName` (growing), and its
 *                              two integers, under the same reservation (3 of 5 arguments).
 * Link_EnableLinkFrom          switches the incoming link on or off.
 * Link_SetLevelLinkFrom        sets the link's two level integers.
 * Link_SetLinkFrom             makes or changes the incoming link `name`.
 * Link_DeleteLinkFrom          removes it.
 * Link_GetLinkFromParentList   identifiers of the protocols that link `index` depends on, joined
 *                              by "," (growing).
 * Link_GetLinkFromParentList2  the same by link name.
 * Link_GetParentsList          the same for the whole protocol.
 * Link_GetLinksToCount         number of outgoing links.
 * Link_GetLinkTo               both texts (growing) of outgoing link `index`.
 * Link_DeleteLinkTo,
 * Link_SetLinkTo               one outgoing link by its two texts.
 * Link_Translate               translates `text` in place; its buffer holds capacity + 1 bytes.
 */
/* clang-format off */
#define QM_LINK_FUNCTIONS(X)                                                                      \
  X(Link_CreateUniquePID, short, (char* protocolId), (protocolId))                                \
  X(Link_GetLinksFromCount, int, (const char* protocolId), (protocolId))                          \
  X(Link_GetLinkFrom, short,                                                                      \
    (const char* protocolId, int index, char* first, char* second, int* enabled, int* level),     \
    (protocolId, index, first, second, enabled, level))                                           \
  X(Link_GetLinkFrom2, short,                                                                     \
    (const char* protocolId, const char* linkName, char* text, int* enabled, int* level),         \
    (protocolId, linkName, text, enabled, level))                                                 \
  X(Link_EnableLinkFrom, short, (const char* protocolId, const char* linkName, int enable),       \
    (protocolId, linkName, enable))                                                               \
  X(Link_SetLevelLinkFrom, short,                                                                 \
    (const char* protocolId, const char* linkName, int first, int second),                        \
    (protocolId, linkName, first, second))                                                        \
  X(Link_SetLinkFrom, short, (const char* protocolId, const char* name, const char* text),        \
    (protocolId, name, text))                                                                     \
  X(Link_DeleteLinkFrom, short, (const char* protocolId, const char* linkName),                   \
    (protocolId, linkName))                                                                       \
  X(Link_GetLinkFromParentList, short, (const char* protocolId, int index, char* list),           \
    (protocolId, index, list))                                                                    \
  X(Link_GetLinkFromParentList2, short,                                                           \
    (const char* protocolId, const char* linkName, char* list), (protocolId, linkName, list))     \
  X(Link_GetParentsList, short, (const char* protocolId, char* list), (protocolId, list))         \
  X(Link_GetLinksToCount, int, (const char* protocolId), (protocolId))                            \
  X(Link_GetLinkTo, short, (const char* protocolId, int index, char* first, char* second),        \
    (protocolId, index, first, second))                                                           \
  X(Link_DeleteLinkTo, short, (const char* protocolId, const char* first, const char* second),    \
    (protocolId, first, second))                                                                  \
  X(Link_SetLinkTo, short, (const char* protocolId, const char* first, const char* second),       \
    (protocolId, first, second))                                                                  \
  X(Link_Translate, short, (char* text, int capacity), (text, capacity))
/* clang-format on */

#endif /* QUILLMAR_LINKS_H */
