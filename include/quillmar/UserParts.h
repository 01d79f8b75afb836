/** @file
 * The companions that finish user parts: the LISP generator `lispora.dll`, the data wizard and the
 * import wizard. All lie in the companion folder: what the calculation host answers to
 * QM_HOST_COMPANION_FOLDER, the suite's folder without a host.
 *
 * The generator is old; callers do not rely on who removes the arguments.
 */
#ifndef QUILLMAR_USERPARTS_H
#define QUILLMAR_USERPARTS_H

#include "quillmar/Conventions.h"

/** File name of the generator. */
#define QM_LISP_LIBRARY "lispora.dll"
/** Written by the generator beside itself when it fails: a text for the user. */
#define QM_LISP_ERRORS "lispora.err"

/** Started with the path of a template description (".tmu") as its whole parameter. */
#define QM_DATA_WIZARD "DATROVA.EXE"
/** Started with "/C " and the identifier of a protocol that describes the file to import. */
#define QM_IMPORT_WIZARD "INMOVA.EXE"

/** X(name, result, (parameters), (argument names)).
 *
 * GenerateLisp  translates a drawing into a LISP description. The module passes:
 *                 dxfPath       the drawing
 *                 outputBase    path without extension of the files to write; the description is
 *                               outputBase + ".lsp"
 *                 view          "USER"
 *                 picture       empty
 *                 mode          0
 *                 x, y          insertion point that the user picked, in the drawing's unit
 *                 first, second, third  0
 *                 firstTolerance, secondTolerance  0.001 and 0.01, in the drawing's unit
 *               Nonzero for success.
 */
/* clang-format off */
#define QM_LISP_FUNCTIONS(X)                                                                      \
  X(GenerateLisp, int,                                                                            \
    (const char* dxfPath, const char* outputBase, const char* view, const char* picture,          \
     int mode, double x, double y, int first, int second, int third, double firstTolerance,       \
     double secondTolerance),                                                                     \
    (dxfPath, outputBase, view, picture, mode, x, y, first, second, third, firstTolerance,        \
     secondTolerance))
/* clang-format on */

#endif /* QUILLMAR_USERPARTS_H */
