/* What Drawboard.dll exports beyond the driver functions, for the program that plays the CAD's
 * user: documents, selection, edits, answers to questions.
 *
 * Results are 1 and 0; a 0 leaves a line in the messages. Texts are in the code page unless it
 * is said that they are UTF-8. Lists follow the buffer rule of the driver: *size is the capacity
 * without the NUL, 0 with a *size above 0 asks for a buffer of that size.
 *
 * Saving also writes, on a machine with the solid modeller, what other programs and pages show of
 * the model. They lie beside the part file and bear its name without extension: <part>.step   the
 * solid, with name and colour, in millimetres (AP214) <part>.glb    its triangles, in metres with y
 * upwards, for a viewer <part>.svg    an isometric picture without hidden lines, in millimetres and
 * for the assembly <document>.step and <document>.glb beside the document: all visible parts with
 * their names and colours, each beside the one before it, since this CAD knows no mates. Parts that
 * no builder knows have none of them; files of parts that did not change since this process wrote
 * them stay as they are. The same part gives the same bytes. A file is there whole or not at all.
 *
 * Calls that come before a document was made or opened work in a document "Untitled", which
 * starts empty in each process.
 */
#ifndef DRAWBOARD_DRAWBOARD_H
#define DRAWBOARD_DRAWBOARD_H

#include "quillmar/Conventions.h"

typedef int(QM_CDECL* DrawboardSaveWatcher)(void* context, int made, int count, const char* name);

/* X(name, result, (parameters), (argument names)).
 *
 * Drawboard_NewDocument   an empty document, "mm" or "in". `path` is a full path, or a name for a
 *                         document "<add-in's folder>\Document\<name>.json". Replaces a document
 *                         of that path.
 * Drawboard_OpenDocument  reads a document back.
 * Drawboard_SaveDocument  writes the document under another path; empty: under its own. Every
 *                         change is written by itself, so this is needed for a copy, and for the
 *                         files that are described above.
 * Drawboard_WatchSaving   from now on saving tells `watcher` before it makes the files of a part or
 *                         of the assembly: how many it has made of how many, and the name of what
 *                         comes. Its answer 0 ends the saving, which then fails; the document and
 *                         every file that was written are whole. A null pointer ends the watching.
 * Drawboard_SetFolder     leads a marker ("ASM", "WORKSPACE", "LIB", "CONTENTLIB") elsewhere.
 * Drawboard_Select        selects an object by name or protocol identifier, as the user does with
 *                         the mouse; empty: nothing is selected.
 * Drawboard_Place         puts an object of the designer's own making into the document, or one
 *                         from an older document: it carries the reference text `connection`.
 *                         `kind` is a word of the document ("part", "shaft" ...); `name` is made
 *                         unique.
 * Drawboard_SetParameter  changes a parameter of an object, as the designer does in the CAD.
 * Drawboard_AnswerFile    path that the next file dialog gives; without it a dialog is cancelled.
 * Drawboard_AnswerPoint   point that the next pick gives.
 * Drawboard_GetDocument   the document as JSON, in UTF-8.
 * Drawboard_GetMessages   what the CAD had to say so far, one line each, oldest first.
 * Drawboard_ClearMessages forgets them.
 */
/* clang-format off */
#define DRAWBOARD_FUNCTIONS(X)                                                                    \
  X(Drawboard_NewDocument, int, (const char* path, const char* unit), (path, unit))               \
  X(Drawboard_OpenDocument, int, (const char* path), (path))                                      \
  X(Drawboard_SaveDocument, int, (const char* path), (path))                                      \
  X(Drawboard_WatchSaving, int, (DrawboardSaveWatcher watcher, void* context), (watcher, context))  \
  X(Drawboard_SetFolder, int, (const char* marker, const char* folder), (marker, folder))         \
  X(Drawboard_Select, int, (const char* name), (name))                                            \
  X(Drawboard_Place, int, (const char* kind, const char* name, const char* connection),            \
    (kind, name, connection))                                                                     \
  X(Drawboard_SetParameter, int,                                                                  \
    (const char* object, const char* parameter, const char* value), (object, parameter, value))   \
  X(Drawboard_AnswerFile, int, (const char* path), (path))                                        \
  X(Drawboard_AnswerPoint, int, (double x, double y, int third), (x, y, third))                   \
  X(Drawboard_GetDocument, int, (char* text, int* size), (text, size))                            \
  X(Drawboard_GetMessages, int, (char* text, int* size), (text, size))                            \
  X(Drawboard_ClearMessages, int, (void), ())
/* clang-format on */

#endif /* DRAWBOARD_DRAWBOARD_H */
