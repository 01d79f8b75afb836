/** @file
 * Functions that Quillmar.dll exports to the CAD add-in and to the suite's other programs.
 *
 * Export names are undecorated. All use the C calling convention, ObtainProtocol and
 * GetPartInformation the standard one. Nothing is thrown; bad arguments give the failure result. A
 * null text counts as an empty one; a null output pointer is skipped. Every export expects a
 * completed LoginCad; before it there is no CAD driver, and what needs the driver fails.
 */
#ifndef QUILLMAR_EXPORTS_H
#define QUILLMAR_EXPORTS_H

#include "quillmar/Conventions.h"
#include "quillmar/OptionsPage.h"

/** X(name, convention, result, (parameters), (argument names)).
 *
 * AddBomTag         the CAD stores the bill-of-materials entry `key` under `<group>\<name>`. Once
 *                   any entry was registered, those that were not go under the default section.
 *                   Always 1.
 * AddUTDXFPart      asks the user for a name, has the CAD write the open document as a picture and
 *                   as DXF files, until it refuses one (1,000 at most), and starts the data wizard
 *                   on them. 1, also when there was no drawing and nothing was started; 0 when the
 *                   user cancelled or the picture failed.
 * AddUTPart         the same with one DXF file, translated into a LISP description from a point
 *                   that the user picks. 1 when the data wizard was told to start, 0 otherwise.
 * CallFem           has the CAD draw the open document and lets the host show the finite-element
 *                   calculation of the drawing; 1, or 0 on a failure before the host is told. The
 *                   drawing is a temporary file named in the protocol.
 * CallOptim         lets the optimizer run the calculation of the object that is selected in the
 *                   CAD, or the group that the object stands for; 1, also for an object in which
 *                   there is nothing to optimize; 0 when nothing is selected.
 * CallOptimGM       lets the optimizer run the calculation of the protocol on behalf of the group
 *                   manager; 1 when the protocol opened, else 0.
 * CallUTFunction    queues a function by its number and returns 1 at once; it runs when the
 *                   module's window handles the posted message. An unknown number does nothing.
 * CopyProtocol      makes a stored copy of the protocol that `reference` carries, under a new
 *                   identifier, without links and without parts of a bolted connection. `newId` and
 *                   `newReference` are buffers of the caller; a new reference text is as long as
 *                   the given one or longer by the difference of the identifiers. 1, or 0 when the
 *                   text is no reference.
 * CorrectProtocol   hands the protocol to the host for a check; the host's answer, 0 when it cannot
 *                   be reached.
 * Create2dPart      draws a copy of a protocol, without its links, for the add-in to insert.
 *                     newId               identifier of the copy, which stays in the store; buffer
 *                                         of 260 characters
 *                     connection          reference text of the copy, with the links that the
 *                                         source had
 *                     connectionCapacity  in: size of that buffer in characters, the NUL included;
 *                                         out: length of the text, or the size to offer to a
 *                                         second call when it did not fit
 *                     drawingFile         temporary file, owned by the caller, empty in a session
 *                                         without 2D output; buffer of 260 characters
 *                     metric              1 for millimetres
 *                     x, y, level         where the drawing is put, in its own unit
 *                     pairs, count        extended data; the caller's, who frees it through
 *                                         DeleteBomInfo. Both or none are wanted
 *                     removeInfo          1: the copy notes that the CAD object is to lose its
 *                                         information
 *                   1; 0, and nothing left behind, when there is no such protocol, the host cannot
 *                   draw it, or a text does not fit.
 * CreateAssemblyProtocol
 *                   the same as CreateUserProtocol for an assembly.
 * CreateFileName    caption and bill-of-materials texts of a part, by the options of the
 *                   application that logged in last, which become the current options without pages
 *                   of a caller.
 *                     tagsOut        "$<name><TAB>" for each tag
 *                     valuesOut      "<caption><TAB>", then "<value><TAB>" for each tag
 *                   The buffers have no stated size and must hold everything; they are untouched
 *                   when the protocol does not open or has no part (result 0).
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
 * DataWizard        starts the data wizard on a description of the part that is selected in the
 *                   CAD; 1 when it was started.
 * DeleteBomInfo     frees an array of pairs that an export handed out, and its texts. Always 1.
 * DoWDOperation     asks the add-in for the data of the data wizard (driver function GetDataWD)
 *                   and starts the wizard on them. The three numbers are passed on to the wizard as
 *                   they are. No result; without GetDataWD nothing happens.
 * EditLinks         lets the user edit the links of the protocol in the host; the host's answer,
 *                   0 when it cannot be reached.
 * EditOneLink       the same for the link of that name.
 * EndSolution       tells the host that the solution begun by InitSolution is over; 1 when the
 *                   host was reached, else 0.
 * GMInsertNextObject
 *                   inserts the next object of the scanned group half a second later, from the
 *                   message loop. Called again before that, only the later call counts. Identifier
 *                   of the timer, 0 when there is none.
 * GenerateFamTable  the host's function of that name, which a host may lack: a family table of the
 *                   protocol; the host's answer, else 0.
 * GetAllMCWProtocolIDs
 *                   identifiers of the main protocol and of the parts of a bolted connection,
 *                   joined by ",". *capacity is the room of `list` in bytes, NUL included. The
 *                   number of identifiers; 0 when the text is no reference; -1 when the list does
 *                   not fit, and *capacity is then the room that is needed.
 * GetAssemblyPath   asks the add-in for the file path of the active assembly; `path` is a buffer
 *                   of 1024 characters. The add-in's result; 0 when it does not offer it.
 * GetCadHinstance   module handle of the add-in, null before LoginCad.
 * GetDataValues     data parameters of a protocol that is given as reference text.
 *                     names    of the parameters wanted, joined by ","
 *                     out      "name,value,unit" of each that the protocol has, joined by ",";
 *                              commas in values are "<VXCOMMA>". Buffer of `outSize` characters,
 *                              the NUL included; untouched when the text does not fit
 *                   Length of the text, 0 when the reference text is none.
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
 * GetQuillmarVersion
 *                   version of the module as QM_VERSION_NUMBER (Version.h) counts it. No login
 *                   is needed.
 * GetUnitList       `*view*,<view key>,<name>,<unit>,...` of the calculation's parameters.
 *                     size           in: the most characters that fit, the buffer having room for a
 *                                    NUL more; out: the length of the list
 *                   0 when the list does not fit or the protocol does not open; with the size that
 *                   came back a second call succeeds. An empty list when the protocol's data cannot
 *                   be counted (result 1).
 * ImportWizard      starts the import wizard on a file; type and units are the wizard's own
 *                   numbers. Always 1.
 * InitSolution      begins the solution of the protocol's links in the host; the host's answer, 0
 *                   when it cannot be reached.
 * IsFeaturePositive 1 for a feature, and *positive says whether it adds material (1) or takes it
 *                   away (0); 0, and *positive untouched, for any other part.
 * IsPartMetrics     1, also in `metric`, for a protocol of the store whose unit is "mm", else 0.
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
 * MCWRecalculate    has the bolted-connection library edit the connection whose reference text is
 *                   given, after a recalculation. `flag` is not used, `first` and `second` are for
 *                   that library. Its result; 0 without the library, for a text that is no
 *                   reference, and when a calculation window holds the protocol, which is then
 *                   brought to the front.
 * MakePicture       lets the host draw the protocol as a picture; picturePath receives the path of
 *                   the temporary file (".WMF", owned by the caller), buffer of 260 characters. 1
 *                   when the host drew it, else 0 and an empty path.
 * ObtainProtocol    opens the protocol of the CAD object of that name from the CAD's reference
 *                   text and marks it as drawn; 1 when that worked.
 * ReadConfiguration reads the user's options again. Always 1.
 * ReceiveMessage    takes a notification of a calculation application; `text` is the identifier
 *                   of the protocol that holds the parameters, where there are any. Always 1, also
 *                   for numbers that are not known and for failures.
 *                     1003, 1008  an optimisation has ended, will start; in between results leave
 *                                 the CAD window where it is
 *                     1004        the object of the protocol is to be changed in the CAD
 *                     2000        answered by 2001
 *                     4101        the user is to measure a value in the CAD, in the unit that
 *                                 "TessioCallParam" "Unit" names
 *                     5556        the objects of the protocols in "Main" "Protocols" (joined by
 *                                 ",") get their reference texts anew; the protocol is erased
 *                     6000, 6003  the file "Data" "InOutFile" of kind "Data" "Type" is exchanged
 *                                 with the CAD; answered by 6001 with 11 or 5, the result stands
 *                                 in "Data" "Return"
 *                     6100        the data wizard has ended
 *                     6200        the options have changed
 * RefreshAllLinks   updates every CAD object whose protocol takes part in a link and lets the host
 *                   show the group of the active assembly; 1, or 0 when the CAD does not list its
 *                   parts or the group could not be made.
 * Set2dAxisOverlap  how far axes stick out of the drawings to come, in millimetres; 1.
 * Set2dFileType     looks the 2D driver functions up and keeps the kind of drawing files (2 is
 *                   DXF); 0 when a required one is missing, which also ends the use of the whole
 *                   driver until the next LoginCad.
 * SetCadIniFile     names the add-in's own ini file and reads which standard of the calculations
 *                   stands for each of the CAD's: names in "General" "Standards" (joined by ","),
 *                   the standard for each in section "StdHXMapping" (default: the name itself). 1
 *                   when the file lists a standard, else 0.
 * SetDefaultUserBTSection
 *                   the section of the CAD for entries that nobody registered. Always 1.
 * SetMeasureValue   hands the measured value to the calculation that asked for it; it may be
 *                   called again with another value. Always 1; without a request nothing happens.
 * SetOptions        makes the options of an application the current ones.
 *                     pages, count   array of pointers to pages of the caller, each a QmOptionsPage
 *                                    (see OptionsPage.h); what is none is skipped and reported
 *                     applicationKey  name of the options below the module's registry key
 *                     helpFile, helpContext  help on our own pages; an empty file: none
 *                   Always 0.
 * ShowAboutDlg      shows a box with this title and text until the user closes it; 1 when it was
 *                   shown.
 * ShowDialogUT      closes the protocol and lets the host show its calculation; the host's
 *                   answer, 0 when it cannot be reached.
 * ShowFormat        makes a protocol for a sheet format of that standard and scale and lets the
 *                   host show it; the host's answer, 0 when it cannot be reached.
 * ShowMCWDialog     lets the host show the bolted connection of the protocol. Always 1.
 * ShowOptionsDialog
 *                   lets the user edit the current options, modal to the CAD's main window; 1 when
 *                   he confirmed and they were saved, 0 when he cancelled or there is no page.
 * ShowToolbar       shows the module's toolbar (nonzero) or hides it (0). Its three commands
 *                   (options, refreshing links, writing extended data) can be chosen when the
 *                   session's showFlag has bit 0x10. Always 1.
 * SolveOneLink      solves the link of that name of the protocol in the host; the host's answer, 0
 *                   when it cannot be reached.
 * StartCalculation  makes a protocol for the calculation `dataFile` (its name without folder) in
 *                   the given standard and lets the host show it. No result: the finished
 *                   calculation comes back through the callback window.
 * StartNewBC        starts a new bolted connection in the standard that was used last; 1 when the
 *                   host was asked to show it, 0 when no protocol could be made.
 * Synchronize       brings the protocol's links up to date in the host, which knows what `mode`
 *                   says; the host's answer, 0 when it cannot be reached.
 * UpdateExtendedData
 *                   writes the extended data of all parts in the CAD again; 0 when the CAD does not
 *                   tell its parts.
 */
/* clang-format off */
#define QM_EXPORTS(X)                                                                             \
  X(AddBomTag, QM_CDECL, int, (const char* group, const char* name, const char* key),             \
    (group, name, key))                                                                           \
  X(AddUTDXFPart, QM_CDECL, int, (void), ())                                                      \
  X(AddUTPart, QM_CDECL, int, (void), ())                                                         \
  X(CallFem, QM_CDECL, int, (void), ())                                                           \
  X(CallOptim, QM_CDECL, int, (void), ())                                                         \
  X(CallOptimGM, QM_CDECL, int, (const char* protocolId), (protocolId))                           \
  X(CallUTFunction, QM_CDECL, int, (int number), (number))                                        \
  X(CopyProtocol, QM_CDECL, int, (const char* reference, char* newId, char* newReference),        \
    (reference, newId, newReference))                                                             \
  X(CorrectProtocol, QM_CDECL, int, (const char* protocolId), (protocolId))                       \
  X(Create2dPart, QM_CDECL, int,                                                                  \
    (const char* protocolId, char* newId, char* connection, int* connectionCapacity,              \
     char* drawingFile, int* metric, double* x, double* y, double* level, ExtDataPair** pairs,    \
     int* count, int removeInfo),                                                                 \
    (protocolId, newId, connection, connectionCapacity, drawingFile, metric, x, y, level, pairs,  \
     count, removeInfo))                                                                          \
  X(CreateAssemblyProtocol, QM_CDECL, int,                                                        \
    (char* protocolId, char* reference, const char* caption), (protocolId, reference, caption))   \
  X(CreateFileName, QM_CDECL, int, (const char* protocolId, char* tagsOut, char* valuesOut),      \
    (protocolId, tagsOut, valuesOut))                                                             \
  X(CreatePartProtocol, QM_CDECL, int,                                                            \
    (const char* dataFile, const char* standard, const char* viewKey, const char* parameters,     \
     char* protocolId, char* reference, int* capacity),                                           \
    (dataFile, standard, viewKey, parameters, protocolId, reference, capacity))                   \
  X(CreateUniqueCopy, QM_CDECL, int, (void), ())                                                  \
  X(CreateUserProtocol, QM_CDECL, int,                                                            \
    (char* protocolId, char* reference, const char* caption), (protocolId, reference, caption))   \
  X(DataWizard, QM_CDECL, int, (void), ())                                                        \
  X(DeleteBomInfo, QM_CDECL, int, (ExtDataPair* pairs, int count), (pairs, count))                \
  X(DoWDOperation, QM_CDECL, void, (int first, int second, int third), (first, second, third))    \
  X(EditLinks, QM_CDECL, int, (const char* protocolId), (protocolId))                             \
  X(EditOneLink, QM_CDECL, int, (const char* protocolId, const char* link), (protocolId, link))   \
  X(EndSolution, QM_CDECL, int, (void), ())                                                       \
  X(GMInsertNextObject, QM_CDECL, int, (void), ())                                                \
  X(GenerateFamTable, QM_CDECL, int, (const char* protocolId, const char* table),                 \
    (protocolId, table))                                                                          \
  X(GetAllMCWProtocolIDs, QM_CDECL, int, (const char* reference, char* list, int* capacity),      \
    (reference, list, capacity))                                                                  \
  X(GetAssemblyPath, QM_CDECL, int, (char* path), (path))                                         \
  X(GetCadHinstance, QM_CDECL, QmModule, (void), ())                                              \
  X(GetDataValues, QM_CDECL, int,                                                                 \
    (const char* referenceText, const char* names, char* out, int outSize),                       \
    (referenceText, names, out, outSize))                                                         \
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
  X(GetQuillmarVersion, QM_CDECL, int, (void), ())                                                \
  X(GetUnitList, QM_CDECL, int, (const char* protocolId, char* out, int* size),                   \
    (protocolId, out, size))                                                                      \
  X(ImportWizard, QM_CDECL, int, (int type, int units, const char* fileName),                     \
    (type, units, fileName))                                                                      \
  X(InitSolution, QM_CDECL, int, (const char* protocolId), (protocolId))                          \
  X(IsFeaturePositive, QM_CDECL, int, (const char* protocolId, int* positive),                    \
    (protocolId, positive))                                                                       \
  X(IsPartMetrics, QM_CDECL, int, (const char* protocolId, int* metric), (protocolId, metric))    \
  X(IsSmartPart, QM_CDECL, int, (const char* reference), (reference))                             \
  X(LoginCad, QM_CDECL, int,                                                                      \
    (const char* cadModuleName, int showFlag, int modelFileKind, const char* modelDirName,        \
     const char* modelExt, const char* featureExt, const char* settingsName, int* status),        \
    (cadModuleName, showFlag, modelFileKind, modelDirName, modelExt, featureExt, settingsName,    \
     status))                                                                                     \
  X(LogoutCad, QM_CDECL, int, (void), ())                                                         \
  X(MCWRecalculate, QM_CDECL, int, (const char* reference, int flag, int first, int second),      \
    (reference, flag, first, second))                                                             \
  X(MakePicture, QM_CDECL, int, (const char* protocolId, char* picturePath),                      \
    (protocolId, picturePath))                                                                    \
  X(ObtainProtocol, QM_STDCALL, int, (const char* partName), (partName))                          \
  X(ReadConfiguration, QM_CDECL, int, (void), ())                                                 \
  X(ReceiveMessage, QM_CDECL, int, (int number, const char* text), (number, text))                \
  X(RefreshAllLinks, QM_CDECL, int, (void), ())                                                   \
  X(Set2dAxisOverlap, QM_CDECL, int, (double overlap), (overlap))                                 \
  X(Set2dFileType, QM_CDECL, int, (int fileType), (fileType))                                     \
  X(SetCadIniFile, QM_CDECL, int, (const char* iniPath), (iniPath))                               \
  X(SetDefaultUserBTSection, QM_CDECL, int, (const char* section), (section))                     \
  X(SetMeasureValue, QM_CDECL, int, (double value), (value))                                      \
  X(SetOptions, QM_CDECL, int,                                                                    \
    (const QmOptionsPage* const* pages, int count, const char* applicationKey,                    \
     const char* helpFile, unsigned helpContext),                                                 \
    (pages, count, applicationKey, helpFile, helpContext))                                        \
  X(ShowAboutDlg, QM_CDECL, int, (const char* title, const char* text), (title, text))            \
  X(ShowDialogUT, QM_CDECL, int, (const char* protocolId), (protocolId))                          \
  X(ShowFormat, QM_CDECL, int, (const char* standard, double scale), (standard, scale))           \
  X(ShowMCWDialog, QM_CDECL, int, (const char* protocolId), (protocolId))                         \
  X(ShowOptionsDialog, QM_CDECL, int, (void), ())                                                 \
  X(ShowToolbar, QM_CDECL, int, (int show), (show))                                               \
  X(SolveOneLink, QM_CDECL, int, (const char* protocolId, const char* link), (protocolId, link))  \
  X(StartCalculation, QM_CDECL, void, (const char* dataFile, const char* standard),               \
    (dataFile, standard))                                                                         \
  X(StartNewBC, QM_CDECL, int, (void), ())                                                        \
  X(Synchronize, QM_CDECL, int, (const char* protocolId, int mode), (protocolId, mode))           \
  X(UpdateExtendedData, QM_CDECL, int, (void), ())
/* clang-format on */

/** @def QM_MODULE_EXPORT
 * On Windows the names come from the library's module-definition file: an export attribute would
 * add decorated ones. */
#if defined(_WIN32)
#define QM_MODULE_EXPORT
#else
#define QM_MODULE_EXPORT QM_EXPORT
#endif

/** Declares one export. */
#define QM_DECLARE_EXPORT(name, convention, result, parameters, arguments) \
  QM_EXTERN_C QM_MODULE_EXPORT result convention name parameters;
QM_EXPORTS(QM_DECLARE_EXPORT)
#undef QM_DECLARE_EXPORT

#endif /* QUILLMAR_EXPORTS_H */
