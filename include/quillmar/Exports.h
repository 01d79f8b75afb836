/* Functions that Quillmar.dll exports to the CAD add-in and to the suite's other programs.
 *
 * Export names are undecorated. All use the C calling convention, ObtainProtocol the standard
 * one. Nothing is thrown; bad arguments give the failure result. A null text counts as an empty
 * one; a null output pointer is skipped. Every export expects a completed LoginCad; before it there
 * is no CAD driver, and what needs the driver fails.
 */
#ifndef QUILLMAR_EXPORTS_H
#define QUILLMAR_EXPORTS_H

#include "quillmar/Conventions.h"

/* X(name, convention, result, (parameters), (argument names)).
 *
 * LoginCad          begins a session.
 *                     cadModuleName  file name of the add-in's module, already loaded in the
 *                                    process ("Grupova.exe" and "optara.exe" are known as the
 *                                    group manager and the optimizer)
 *                     showFlag       bit set; 0x10 enables the toolbar's commands, 0x40 keeps the
 *                                    identity of shared parts at a change
 *                     modelFileKind  kind of the model files; 0 switches 2D output off, -1 from
 *                                    the group manager says that no CAD is there
 *                     modelDirName   name of the folder of library models below a calculation's
 *                                    own folder
 *                     modelExt, featureExt  extensions of part and feature files, without dot
 *                     settingsName   key of this application's settings in the registry
 *                     status         receives 1
 *                   1 when the session is usable; 0 when the add-in is not loaded or lacks a
 *                   required driver function. A further LoginCad renews the session's texts.
 * LogoutCad         ends the session and, by the option "EndUTOnExit", the host. Always 1.
 * StartCalculation  makes a protocol for the calculation `dataFile` (its name without folder) in
 *                   the given standard and lets the host show it. No result: the finished
 *                   calculation comes back through the callback window.
 * ShowDialogUT      closes the protocol and lets the host show its calculation; the host's
 *                   answer, 0 when it cannot be reached.
 * Set2dFileType     looks the 2D driver functions up and keeps the kind of drawing files (2 is
 *                   DXF); 0 when a required one is missing, which also ends the use of the whole
 *                   driver until the next LoginCad.
 * ObtainProtocol    opens the protocol of the CAD object of that name from the CAD's reference
 *                   text and marks it as drawn; 1 when that worked.
 * CallUTFunction    queues a function by its number and returns 1 at once; it runs when the
 *                   module's window handles the posted message. An unknown number does nothing.
 * GetCadHinstance   module handle of the add-in, null before LoginCad.
 */
/* clang-format off */
#define QM_EXPORTS(X)                                                                             \
  X(LoginCad, QM_CDECL, int,                                                                      \
    (const char* cadModuleName, int showFlag, int modelFileKind, const char* modelDirName,        \
     const char* modelExt, const char* featureExt, const char* settingsName, int* status),        \
    (cadModuleName, showFlag, modelFileKind, modelDirName, modelExt, featureExt, settingsName,    \
     status))                                                                                     \
  X(LogoutCad, QM_CDECL, int, (void), ())                                                         \
  X(StartCalculation, QM_CDECL, void, (const char* dataFile, const char* standard),               \
    (dataFile, standard))                                                                         \
  X(ShowDialogUT, QM_CDECL, int, (const char* protocolId), (protocolId))                          \
  X(Set2dFileType, QM_CDECL, int, (int fileType), (fileType))                                     \
  X(ObtainProtocol, QM_STDCALL, int, (const char* partName), (partName))                          \
  X(CallUTFunction, QM_CDECL, int, (int number), (number))                                        \
  X(GetCadHinstance, QM_CDECL, QmModule, (void), ())
/* clang-format on */

/* On Windows the names come from the library's module-definition file: an export attribute would
 * add decorated ones. */
#if defined(_WIN32)
#define QM_MODULE_EXPORT
#else
#define QM_MODULE_EXPORT QM_EXPORT
#endif

#define QM_DECLARE_EXPORT(name, convention, result, parameters, arguments) \
  QM_EXTERN_C QM_MODULE_EXPORT result convention name parameters;
QM_EXPORTS(QM_DECLARE_EXPORT)
#undef QM_DECLARE_EXPORT

#endif /* QUILLMAR_EXPORTS_H */
