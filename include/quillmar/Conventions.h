/** @file
 * Calling conventions, handles and small shared types of every binary contract of Quillmar.
 *
 * Conventions that hold in all headers of this folder:
 *  1. Texts are zero-terminated 8-bit strings in the system code page. A callee never keeps a
 *     text pointer beyond the call; who wants to keep a text copies it.
 *  2. Output buffers belong to the caller. Their size is stated at each function.
 *  3. Nobody frees what the other side allocated, unless a function says so.
 *  4. Nothing is thrown across a border.
 *  5. Every call happens on the CAD's user-interface thread.
 *  6. A result declared `short` fills only the lower half of the register; the upper half is
 *     garbage and must not be looked at. The compiler sees to that as long as the declaration
 *     here is used.
 *
 * The contracts are lists of the form X(name, result, (parameters), (argument names)); tables of
 * function pointers, binding by name, stand-ins and recorders all derive from the same list.
 */
#ifndef QUILLMAR_CONVENTIONS_H
#define QUILLMAR_CONVENTIONS_H

#include <stdint.h>

/** @def QM_CDECL
 * The C calling convention: the caller removes the arguments. Conventions differ on Windows alone.
 * @def QM_STDCALL
 * The standard calling convention: the function removes its arguments.
 * @def QM_EXPORT
 * Marks a function that a library offers to others. */
#if defined(_WIN32)
#define QM_CDECL __cdecl
#define QM_STDCALL __stdcall
#define QM_EXPORT __declspec(dllexport)
#else
#define QM_CDECL
#define QM_STDCALL
#define QM_EXPORT __attribute__((visibility("default")))
#endif

/** @def QM_EXTERN_C
 * In front of a single declaration that C and C++ share. */
#ifdef __cplusplus
#define QM_EXTERN_C extern "C"
extern "C" {
#else
#define QM_EXTERN_C extern
#endif

/** A window of the window system; 0 is no window. 32 bits on every target, because handles travel
 * through 32-bit outputs, protocol texts and automation integers. */
typedef uint32_t QmWindow;

/** A loaded library or program of this process; null is none. */
typedef void* QmModule;

/** One extended-data value that the CAD stores with a part. Arrays of pairs are made and freed by
 * Quillmar (after the CAD call, or by the export DeleteBomInfo); the CAD only reads them. */
typedef struct ExtDataPair {
  char* name;  /**< under which the CAD keeps it; never null */
  char* value; /**< text; never null */
} ExtDataPair;

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* QUILLMAR_CONVENTIONS_H */
