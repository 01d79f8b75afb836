/** @file
 * Tables of functions bound by name. A member of a table behaves like the function and can be
 * tested like a pointer; called while it is not bound, it returns 0 instead of crashing the
 * process.
 *
 *   struct LinkTable { QM_LINK_FUNCTIONS(QM_BOUND_STDCALL) };
 *   if (links.Link_Translate) links.Link_Translate(text, capacity);
 */
#ifndef QUILLMAR_BOUNDFUNCTION_H
#define QUILLMAR_BOUNDFUNCTION_H

#include "quillmar/Conventions.h"

/** One member of a table, whatever its convention. */
#define QM_BOUND_MEMBER(name, convention, result, parameters, arguments)                      \
  struct name##Function {                                                                     \
    using Pointer = result(convention*) parameters;                                           \
    Pointer pointer = nullptr;                                                                \
    explicit operator bool() const { return pointer != nullptr; }                             \
    result operator() parameters const { return pointer != nullptr ? pointer arguments : 0; } \
  } name;

/** For lists X(name, result, (parameters), (arguments)) of standard-convention functions. */
#define QM_BOUND_STDCALL(name, result, parameters, arguments) \
  QM_BOUND_MEMBER(name, QM_STDCALL, result, parameters, arguments)

/** For lists X(name, convention, result, (parameters), (arguments)). */
#define QM_BOUND_WITH_CONVENTION(name, convention, result, parameters, arguments) \
  QM_BOUND_MEMBER(name, convention, result, parameters, arguments)

/** For lists X(need, name, result, (parameters), (arguments)) of C-convention functions. */
#define QM_BOUND_NEEDED(need, name, result, parameters, arguments) \
  QM_BOUND_MEMBER(name, QM_CDECL, result, parameters, arguments)

#endif /* QUILLMAR_BOUNDFUNCTION_H */
