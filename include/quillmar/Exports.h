/* Functions that Quillmar.dll exports to the CAD add-in and to the suite's other programs.
 *
 * Export names are undecorated. All use the C calling convention, ObtainProtocol and
 * GetPartInformation the standard one. Nothing is thrown; bad arguments give the failure result. A
 * null text counts as an empty one; a null output pointer is skipped. Every export expects a
 * completed LoginCad; before it there is no CAD driver, and what needs the driver fails.
 */
#ifndef QUILLMAR_EXPORTS_H
#define QUILLMAR_EXPORTS_H

#include "quillmar/Conventions.h"

/* X(name, convention, result, (parameters), (argument names)).
 *
 * CallOptim         lets the optimizer run the calculation of the object that is selected in the
 *                   CAD, or the group that the object stands for; 1, or 0 when nothing is selected
 *                   that could be optimized.
 * CallUTFunction    queues a function by its number and returns 1 at once; it runs when the
 *                   module's window handles the posted message. An unknown number does nothing.
 * CopyProtocol      makes a stored copy of the protocol that `reference` carries, under a new
 *                   identifier, without links and without parts of a bolted connection. `newId` and
 *                   `newReference` are buffers of the caller; a new reference text is as long as
 *                   the given one or longer by the difference of the identifiers. 1, or 0 when the
 *                   text is no reference.
 * CreateAssemblyProtocol
 *                   the same as CreateUserProtocol for an assembly.
 * CreatePartProtocol
 *                   makes the protocol of a parametric part before any calculation has run: data
 *                   file, standard, view key and a list of parameters ("name,value,"). `protocolId`
 *                   (26 bytes are enough) and `reference` are buffers of the caller; *capacity is
 *                   the room of `reference` in bytes, NUL included. 1, and *capacity is 0 then; 0
 *                   when it could not be written or when the reference text does not fit, and
 *                   *capacity is then the room that is needed. The protocol stays in the store
 *                   either way.
 * CreateUniqueCopy  gives the object that is selected in the CAD a copy of its protocol under an
 *                   identifier of its own; 1 when the CAD took it, else 0.
 * CreateUserProtocol
 *                   makes the protocol of a user part, so that a CAD object can carry a reference
 *                   text from the start. `protocolId` (26 bytes are enough) and `reference` (4 KB
 *                   and the caption four times are enough) are buffers of the caller; `caption` is
 *                   what the user sees, a null pointer gives none. 1, or 0 when something could not
 *                   be written; the protocol stays in the store either way.
 * GMInsertNextObject
 *                   inserts the next object of the scanned group half a second later, from the
 *                   message loop. Called again before that, only the later call counts. Identifier
 *                   of the timer, 0 when there is none.
 * GetAllMCWProtocolIDs
 *                   identifiers of the main protocol and of the parts of a bolted connection,
 *                   joined by ",". *capacity is the room of `list` in bytes, NUL included. The
 *                   number of identifiers; 0 when the text is no reference; -1 when the list does
 *                   not fit, and *capacity is then the room that is needed.
 * GetCadHinstance   module handle of the add-in, null before LoginCad.
 * GetPartInformation
 *                   what the part of the protocol would be inserted (change 0) or changed as:
 *                   *local is 1 for a part made for this design only; `modelPath`, `filePath` and
 *                   `caption` are buffers of the caller (1024 bytes each are enough for paths).
 *                   `modelChanged` says that another library model stands behind the part. 1, or 0
 *                   when the protocol is missing, has no part object, or the user cancelled the
 *                   question for the file; the outputs are then untouched.
 * GetProtocolItem   value of a keyword in a section of the protocol; `value` is a buffer of 1024
 *                   bytes, a longer value is cut. 1, or 0 when the keyword cannot be read; the
 *                   buffer is then untouched.
 * GetProtocolType   kind of the protocol that the reference text carries: 1 calculation, 2 bolted
 *                   connection (found only when the name is asked for), 3 user part, 4 assembly, 5
 *                   group, 0 when the text is no reference. `calculationName` (buffer of the
 *                   caller) and `partType` (1 drawing, 2 and 4 to 7 models and features, 3
 *                   parametric part, 8 calculation, 9 shaft, 10 cam, 0 any other) may be null.
 * IsFeaturePositive 1 for a feature, and *positive says whether it adds material (1) or takes it
 *                   away (0); 0, and *positive untouched, for any other part.
 * IsSmartPart       1 when the object of that reference text was made for this design only, else 0.
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
 * ObtainProtocol    opens the protocol of the CAD object of that name from the CAD's reference
 *                   text and marks it as drawn; 1 when that worked.
 * RefreshAllLinks   updates every CAD object whose protocol takes part in a link and lets the host
 *                   show the group of the active assembly; 1, or 0 when the CAD does not list its
 *                   parts or the group could not be made.
 * Set2dFileType     looks the 2D driver functions up and keeps the kind of drawing files (2 is
 *                   DXF); 0 when a required one is missing, which also ends the use of the whole
 *                   driver until the next LoginCad.
 * ShowDialogUT      closes the protocol and lets the host show its calculation; the host's
 *                   answer, 0 when it cannot be reached.
 * StartCalculation  makes a protocol for the calculation `dataFile` (its name without folder) in
 *                   the given standard and lets the host show it. No result: the finished
 *                   calculation comes back through the callback window.
 */
/* clang-format off */
#define QM_EXPORTS(X)                                                                             \
  X(CallOptim, QM_CDECL, int, (void), ())                                                         \
  X(CallUTFunction, QM_CDECL, int, (int number), (number))                                        \
  X(CopyProtocol, QM_CDECL, int, (const char* reference, char* newId, char* newReference),        \
    (reference, newId, newReference))                                                             \
  X(CreateAssemblyProtocol, QM_CDECL, int,                                                        \
    (char* protocolId, char* reference, const char* caption), (protocolId, reference, caption))   \
  X(CreatePartProtocol, QM_CDECL, int,                                                            \
    (const char* dataFile, const char* standard, const char* viewKey, const char* parameters,     \
     char* protocolId, char* reference, int* capacity),                                           \
    (dataFile, standard, viewKey, parameters, protocolId, reference, capacity))                   \
  X(CreateUniqueCopy, QM_CDECL, int, (void), ())                                                  \
  X(CreateUserProtocol, QM_CDECL, int,                                                            \
    (char* protocolId, char* reference, const char* caption), (protocolId, reference, caption))   \
  X(GMInsertNextObject, QM_CDECL, int, (void), ())                                                \
  X(GetAllMCWProtocolIDs, QM_CDECL, int, (const char* reference, char* list, int* capacity),      \
    (reference, list, capacity))                                                                  \
  X(GetCadHinstance, QM_CDECL, QmModule, (void), ())                                              \
  X(GetPartInformation, QM_STDCALL, int,                                                          \
    (const char* protocolId, int change, int modelChanged, int* local, char* modelPath,           \
     char* filePath, char* caption),                                                              \
    (protocolId, change, modelChanged, local, modelPath, filePath, caption))                      \
  X(GetProtocolItem, QM_CDECL, int,                                                               \
    (const char* protocolId, const char* section, const char* keyword, char* value),              \
    (protocolId, section, keyword, value))                                                        \
  X(GetProtocolType, QM_CDECL, int,                                                               \
    (const char* reference, char* calculationName, int* partType),                                \
    (reference, calculationName, partType))                                                       \
  X(IsFeaturePositive, QM_CDECL, int, (const char* protocolId, int* positive),                    \
    (protocolId, positive))                                                                       \
  X(IsSmartPart, QM_CDECL, int, (const char* reference), (reference))                             \
  X(LoginCad, QM_CDECL, int,                                                                      \
    (const char* cadModuleName, int showFlag, int modelFileKind, const char* modelDirName,        \
     const char* modelExt, const char* featureExt, const char* settingsName, int* status),        \
    (cadModuleName, showFlag, modelFileKind, modelDirName, modelExt, featureExt, settingsName,    \
     status))                                                                                     \
  X(LogoutCad, QM_CDECL, int, (void), ())                                                         \
  X(ObtainProtocol, QM_STDCALL, int, (const char* partName), (partName))                          \
  X(RefreshAllLinks, QM_CDECL, int, (void), ())                                                   \
  X(Set2dFileType, QM_CDECL, int, (int fileType), (fileType))                                     \
  X(ShowDialogUT, QM_CDECL, int, (const char* protocolId), (protocolId))                          \
  X(StartCalculation, QM_CDECL, void, (const char* dataFile, const char* standard),               \
    (dataFile, standard))
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
