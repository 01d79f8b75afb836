/** @file
 * Functions that a CAD add-in exports for Quillmar: the CAD driver.
 *
 * Quillmar never talks to the CAD itself. At LoginCad it looks these names up in the add-in, a
 * module that is already loaded in the process, and calls nothing but them. All use the C calling
 * convention. A result is nonzero for success and 0 for failure. Texts are never kept beyond the
 * call and must be accepted whatever they hold, empty ones included.
 *
 * Words used below:
 *  protocolId      identifier of the calculation's protocol; the add-in stores it with the object
 *  connection      the protocol's reference text (identifier, "<@PID>", the buffer items, each
 *                  closed by "<@EL>"); the add-in stores it with the object and gives it back
 *                  through GetProtocol
 *  parameters      "name,value," list, a comma inside a value written "<VXCOMMA>"; it begins with
 *                  "*view*,<view key>,"
 *  filePath        the model file to write, with the markers `<ASM>\`, `<WORKSPACE>\`, `<LIB>\`
 *                  and `<CONTENTLIB>\` for folders that the CAD resolves
 *  modelPath       the library model that a part is made from; may be empty
 *  local           1: made for this design only; 0: a shared standard part
 *  pairs, count    extended data to store with the object; owned by Quillmar
 *  text, size      list buffer of the caller: *size holds its capacity in characters (one more
 *                  byte is there for the NUL); set *size to the length written. When the text
 *                  does not fit, return 0 and set *size to the length needed: the caller asks
 *                  once more. *size = 0 with result 0 is plain failure.
 *
 * A change function has the arguments of its insert function, in the same order, without what is
 * not formed at a change (the new file path, for shafts, features and cams; the model path too
 * for cams): the object keeps its file.
 *
 * Functions marked required must all be there or LoginCad (Set2dFileType for the 2D list) fails.
 * The others may be missing; the line says what is lost then.
 */
#ifndef QUILLMAR_CADDRIVER_H
#define QUILLMAR_CADDRIVER_H

#include "quillmar/Conventions.h"

/** X(need, name, result, (parameters), (argument names)); need is REQUIRED or OPTIONAL. In the
 * order of lookup at LoginCad.
 *
 * GetMainHwnd               main window of the CAD.
 * GetMainHwndForActivation  window to bring to the front; without it GetMainHwnd's is.
 * GroupInsertStart,
 * GroupInsertEnd            bracket a group insert so that the CAD can batch its work.
 * InsertPart                inserts a model file: file name, protocolId, connection, local,
 *                           second file name, caption, pairs.
 * InsertFeature,
 * ChangeFeature             a feature of an existing part; without them features fail.
 * ConnectProtocol           replaces the connection stored with the object of protocolId.
 * ChangePart                as InsertPart.
 * GetPart                   the object that the user selected: its name (buffer of 1024
 *                           characters) and its reference text; *size receives the length of the
 *                           reference text, below 1 means nothing is selected.
 * GetProtocol               reference text of the object of that name or protocol identifier.
 * InsertParamPart,
 * ChangeParamPart           a part driven by parameters; modelChanged is 1 when another library
 *                           model stands behind it than at the last read-back.
 * GetParameterList,
 * GetParameterListEx        the object's current parameters; the Ex form is preferred, its two
 *                           integers are 0.
 * GetPhysicalPropertiesEx   list of "name,value," of physical properties; without it
 *                           GetPhysicalProperties is asked.
 * GetShaftParameterList     parameters of a shaft, asked for only where GetParameterListEx is
 *                           missing; without it nothing is read.
 * GetAssembly               the active assembly: reference text and two further texts (buffers of
 *                           1024 and 260 characters and a list buffer).
 * GetAssemblyName           name of the active assembly (buffer of 260 characters).
 * InsertAssembly,
 * ChangeAssembly            protocolId, parameters, connection.
 * InsertCalculation, ChangeCalculation           protocolId, connection, caption.
 * InsertCalculationEx                            ... caption, filePath.
 * InsertCalculationEx2, ChangeCalculationEx2     protocolId, connection, parameters, caption
 *                                                (and filePath at insert).
 * GetAssemblyPath           file path of the active assembly (buffer of 1024 characters).
 * InsertShaft, ChangeShaft  a shaft built by the CAD's own shaft function.
 * InsertNamedProtocol,
 * ChangeNamedProtocol       protocolId, name, connection; used only when both are there.
 * ExportModelFile           writes the model of protocolId.
 * IsInchUserPart            sets *inch to 1 for an inch model.
 * GetAllParts               reference texts of all objects, separated by "<@NEXT_PROT>".
 * RenamePart                protocolId, old name, new name.
 * GetPhysicalProperties     centre of mass x y z, volume, area, mass, moments xx yy zz xy xz yz,
 *                           in the units of the CAD document.
 * GetFeaturesState,
 * SetFeaturesState          list of "feature,state,".
 * GetReferenceDims          list of "dimension,value,".
 * OptimWillStart,
 * OptimEnded                bracket an optimisation.
 * ChangeAssemblyEx          ChangeAssembly with extended data.
 * StartMeasure              lets the user measure in the given unit; the value comes back through
 *                           SetMeasureValue.
 * ChangeOptionsSetting      looked up, never called.
 * InsertCamPart,
 * ChangeCamPart             a cam by its profile points (pointCount entries in each array, in the
 *                           base unit), base value and base unit.
 * InsertCamPartEx,
 * ChangeCamPartEx           a cam by its parameters; preferred.
 * GetFilesData              exchanges a file of data with the CAD.
 * GetDataWD                 data of the data wizard: a list buffer and a buffer of 10000
 *                           characters.
 * StopWD                    ends the data wizard's operation.
 * McStart, McEnd            bracket the insert or update of a calculation with several views;
 *                           mode is 0. Missing counts as success.
 * GetPartsVisibility,
 * SetPartsVisibility        list of "part,state,".
 * ShowFileDialog            asks for a file: 0, proposed name, 0, filter, title, path buffer and
 *                           its size in characters; 0 means cancelled.
 * SetActiveConfiguration    protocolId, configuration name, reference text.
 * GetConfiguration          active configuration and list of configurations, joined by ","; both
 *                           buffers have `capacity` characters.
 */
/* clang-format off */
#define QM_CAD_FUNCTIONS(X)                                                                       \
  X(REQUIRED, GetMainHwnd, int, (QmWindow* window), (window))                                     \
  X(OPTIONAL, GetMainHwndForActivation, int, (QmWindow* window), (window))                        \
  X(OPTIONAL, GroupInsertStart, int, (void), ())                                                  \
  X(OPTIONAL, GroupInsertEnd, int, (void), ())                                                    \
  X(REQUIRED, InsertPart, int,                                                                    \
    (const char* fileName, const char* protocolId, const char* connection, int local,             \
     const char* secondFileName, const char* caption, const ExtDataPair* pairs, int count),       \
    (fileName, protocolId, connection, local, secondFileName, caption, pairs, count))             \
  X(OPTIONAL, InsertFeature, int,                                                                 \
    (const char* modelPath, const char* protocolId, const char* connection, const char* filePath, \
     const char* caption, const char* parameters),                                                \
    (modelPath, protocolId, connection, filePath, caption, parameters))                           \
  X(OPTIONAL, ChangeFeature, int,                                                                 \
    (const char* modelPath, const char* protocolId, const char* connection, const char* caption,  \
     const char* parameters),                                                                     \
    (modelPath, protocolId, connection, caption, parameters))                                     \
  X(REQUIRED, ConnectProtocol, int, (const char* protocolId, const char* connection),             \
    (protocolId, connection))                                                                     \
  X(REQUIRED, ChangePart, int,                                                                    \
    (const char* fileName, const char* protocolId, const char* connection, int local,             \
     const char* secondFileName, const char* caption, const ExtDataPair* pairs, int count),       \
    (fileName, protocolId, connection, local, secondFileName, caption, pairs, count))             \
  X(REQUIRED, GetPart, int, (char* partName, char* text, int* size), (partName, text, size))      \
  X(REQUIRED, GetProtocol, int, (const char* partName, char* text, int* size),                    \
    (partName, text, size))                                                                       \
  X(REQUIRED, InsertParamPart, int,                                                               \
    (const char* protocolId, const char* modelPath, const char* parameters,                       \
     const char* connection, int local, const char* filePath, const char* caption,                \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, modelPath, parameters, connection, local, filePath, caption, pairs, count))      \
  X(REQUIRED, ChangeParamPart, int,                                                               \
    (const char* protocolId, const char* modelPath, const char* parameters,                       \
     const char* connection, int local, const char* filePath, const char* caption,                \
     const ExtDataPair* pairs, int count, int modelChanged),                                      \
    (protocolId, modelPath, parameters, connection, local, filePath, caption, pairs, count,       \
     modelChanged))                                                                               \
  X(REQUIRED, GetParameterList, int, (const char* key, char* text, int* size), (key, text, size)) \
  X(OPTIONAL, GetParameterListEx, int,                                                            \
    (const char* key, char* text, int* size, int first, int second),                              \
    (key, text, size, first, second))                                                             \
  X(OPTIONAL, GetPhysicalPropertiesEx, int, (const char* key, char* text, int* size),             \
    (key, text, size))                                                                            \
  X(OPTIONAL, GetShaftParameterList, int, (const char* key, char* text, int* size),               \
    (key, text, size))                                                                            \
  X(REQUIRED, GetAssembly, int, (char* first, char* second, char* text, int* size),               \
    (first, second, text, size))                                                                  \
  X(OPTIONAL, GetAssemblyName, int, (char* name), (name))                                         \
  X(REQUIRED, InsertAssembly, int,                                                                \
    (const char* protocolId, const char* parameters, const char* connection),                     \
    (protocolId, parameters, connection))                                                         \
  X(REQUIRED, ChangeAssembly, int,                                                                \
    (const char* protocolId, const char* parameters, const char* connection),                     \
    (protocolId, parameters, connection))                                                         \
  X(REQUIRED, InsertCalculation, int,                                                             \
    (const char* protocolId, const char* connection, const char* caption),                        \
    (protocolId, connection, caption))                                                            \
  X(OPTIONAL, InsertCalculationEx, int,                                                           \
    (const char* protocolId, const char* connection, const char* caption, const char* filePath),  \
    (protocolId, connection, caption, filePath))                                                  \
  X(REQUIRED, ChangeCalculation, int,                                                             \
    (const char* protocolId, const char* connection, const char* caption),                        \
    (protocolId, connection, caption))                                                            \
  X(OPTIONAL, InsertCalculationEx2, int,                                                          \
    (const char* protocolId, const char* connection, const char* parameters, const char* caption, \
     const char* filePath),                                                                       \
    (protocolId, connection, parameters, caption, filePath))                                      \
  X(OPTIONAL, ChangeCalculationEx2, int,                                                          \
    (const char* protocolId, const char* connection, const char* parameters, const char* caption),\
    (protocolId, connection, parameters, caption))                                                \
  X(OPTIONAL, GetAssemblyPath, int, (char* path), (path))                                         \
  X(REQUIRED, InsertShaft, int,                                                                   \
    (const char* protocolId, const char* modelPath, const char* parameters,                       \
     const char* connection, const char* filePath, const char* caption,                           \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, modelPath, parameters, connection, filePath, caption, pairs, count))             \
  X(REQUIRED, ChangeShaft, int,                                                                   \
    (const char* protocolId, const char* modelPath, const char* parameters,                       \
     const char* connection, const char* caption, const ExtDataPair* pairs, int count),           \
    (protocolId, modelPath, parameters, connection, caption, pairs, count))                       \
  X(OPTIONAL, InsertNamedProtocol, int,                                                           \
    (const char* protocolId, const char* name, const char* connection),                           \
    (protocolId, name, connection))                                                               \
  X(OPTIONAL, ChangeNamedProtocol, int,                                                           \
    (const char* protocolId, const char* name, const char* connection),                           \
    (protocolId, name, connection))                                                               \
  X(REQUIRED, ExportModelFile, int,                                                               \
    (const char* protocolId, const char* format, char* filePath, int options),                    \
    (protocolId, format, filePath, options))                                                      \
  X(OPTIONAL, IsInchUserPart, int, (const char* modelId, int* inch), (modelId, inch))             \
  X(REQUIRED, GetAllParts, int, (char* text, int* size), (text, size))                            \
  X(REQUIRED, RenamePart, int,                                                                    \
    (const char* protocolId, const char* oldName, const char* newName),                           \
    (protocolId, oldName, newName))                                                               \
  X(OPTIONAL, GetPhysicalProperties, int,                                                         \
    (const char* key, double* centerX, double* centerY, double* centerZ, double* volume,          \
     double* area, double* mass, double* momentXX, double* momentYY, double* momentZZ,            \
     double* momentXY, double* momentXZ, double* momentYZ),                                       \
    (key, centerX, centerY, centerZ, volume, area, mass, momentXX, momentYY, momentZZ, momentXY,  \
     momentXZ, momentYZ))                                                                         \
  X(OPTIONAL, GetFeaturesState, int, (const char* key, char* text, int* size), (key, text, size)) \
  X(OPTIONAL, SetFeaturesState, int, (const char* protocolId, const char* states),                \
    (protocolId, states))                                                                         \
  X(OPTIONAL, GetReferenceDims, int, (const char* key, char* text, int* size), (key, text, size)) \
  X(OPTIONAL, OptimWillStart, int, (void), ())                                                    \
  X(OPTIONAL, OptimEnded, int, (void), ())                                                        \
  X(OPTIONAL, ChangeAssemblyEx, int,                                                              \
    (const char* protocolId, const char* parameters, const char* connection,                      \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, parameters, connection, pairs, count))                                           \
  X(OPTIONAL, StartMeasure, int, (const char* unit), (unit))                                      \
  X(OPTIONAL, ChangeOptionsSetting, int, (void), ())                                              \
  X(OPTIONAL, InsertCamPart, int,                                                                 \
    (const char* protocolId, int pointCount, const double* first, const double* second,           \
     double baseValue, const char* baseUnit, const char* connection, const char* filePath,        \
     const char* caption, const ExtDataPair* pairs, int count),                                   \
    (protocolId, pointCount, first, second, baseValue, baseUnit, connection, filePath, caption,   \
     pairs, count))                                                                               \
  X(OPTIONAL, ChangeCamPart, int,                                                                 \
    (const char* protocolId, int pointCount, const double* first, const double* second,           \
     double baseValue, const char* baseUnit, const char* connection, const char* caption,         \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, pointCount, first, second, baseValue, baseUnit, connection, caption, pairs,      \
     count))                                                                                      \
  X(OPTIONAL, InsertCamPartEx, int,                                                               \
    (const char* protocolId, const char* parameters, const char* connection,                      \
     const char* filePath, const char* modelPath, const char* caption,                            \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, parameters, connection, filePath, modelPath, caption, pairs, count))             \
  X(OPTIONAL, ChangeCamPartEx, int,                                                               \
    (const char* protocolId, const char* parameters, const char* connection, const char* caption, \
     const ExtDataPair* pairs, int count),                                                        \
    (protocolId, parameters, connection, caption, pairs, count))                                  \
  X(OPTIONAL, GetFilesData, int, (const char* fileName, int kind), (fileName, kind))              \
  X(OPTIONAL, GetDataWD, int, (char* text, int* size, char* second), (text, size, second))        \
  X(OPTIONAL, StopWD, int, (void), ())                                                            \
  X(OPTIONAL, McStart, int,                                                                       \
    (int mode, const char* calculationName, const char* unit, const char* protocolId,             \
     const char* parameters),                                                                     \
    (mode, calculationName, unit, protocolId, parameters))                                        \
  X(OPTIONAL, McEnd, int, (void), ())                                                             \
  X(OPTIONAL, GetPartsVisibility, int, (const char* key, char* text, int* size),                  \
    (key, text, size))                                                                            \
  X(OPTIONAL, SetPartsVisibility, int, (const char* protocolId, const char* states),              \
    (protocolId, states))                                                                         \
  X(OPTIONAL, ShowFileDialog, int,                                                                \
    (int open, const char* name, int reserved, const char* filter, const char* title, char* path, \
     int size),                                                                                   \
    (open, name, reserved, filter, title, path, size))                                            \
  X(OPTIONAL, SetActiveConfiguration, int,                                                        \
    (const char* protocolId, const char* configuration, const char* connection),                  \
    (protocolId, configuration, connection))                                                      \
  X(OPTIONAL, GetConfiguration, int,                                                              \
    (const char* protocolId, char* active, int capacity, char* list),                             \
    (protocolId, active, capacity, list))

/** Looked up by Set2dFileType.
 *
 * Insert2dPart, Change2dPart  a drawing file; metric is 1 for millimetres; x, y and level place
 *                             it, in the unit of the drawing.
 * InsertSymbol, ChangeSymbol  a drawing symbol; namePrefix begins the names of its blocks.
 * InsertFormat, ChangeFormat  a sheet format with its scale.
 * GetPoint                    lets the user pick a point.
 * CreateDxfFile               writes the active document to that DXF file.
 * CreatePreview               in: path to begin with; out: path of the picture written; 10 more
 *                             characters fit.
 */
#define QM_CAD_2D_FUNCTIONS(X)                                                                    \
  X(REQUIRED, Insert2dPart, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const ExtDataPair* pairs, int count, double x, double y, double level),                      \
    (drawingFile, protocolId, connection, metric, pairs, count, x, y, level))                     \
  X(REQUIRED, Change2dPart, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const ExtDataPair* pairs, int count, double x, double y, double level),                      \
    (drawingFile, protocolId, connection, metric, pairs, count, x, y, level))                     \
  X(OPTIONAL, InsertSymbol, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const char* namePrefix),                                                                     \
    (drawingFile, protocolId, connection, metric, namePrefix))                                    \
  X(OPTIONAL, ChangeSymbol, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const char* namePrefix),                                                                     \
    (drawingFile, protocolId, connection, metric, namePrefix))                                    \
  X(OPTIONAL, InsertFormat, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const char* namePrefix, double scale),                                                       \
    (drawingFile, protocolId, connection, metric, namePrefix, scale))                             \
  X(OPTIONAL, ChangeFormat, int,                                                                  \
    (const char* drawingFile, const char* protocolId, const char* connection, int metric,         \
     const char* namePrefix, double scale),                                                       \
    (drawingFile, protocolId, connection, metric, namePrefix, scale))                             \
  X(OPTIONAL, GetPoint, int, (double* x, double* y, int* third), (x, y, third))                   \
  X(OPTIONAL, CreateDxfFile, int, (const char* fileName), (fileName))                             \
  X(OPTIONAL, CreatePreview, int, (char* fileName), (fileName))
/* clang-format on */

#endif /* QUILLMAR_CADDRIVER_H */
