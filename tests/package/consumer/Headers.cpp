// Every header of the package is C++.
#include <quillmar/BoltedConnections.h>
#include <quillmar/BoundFunction.h>
#include <quillmar/CadDriver.h>
#include <quillmar/CalculationHost.h>
#include <quillmar/Conventions.h>
#include <quillmar/Exports.h>
#include <quillmar/Ipc.h>
#include <quillmar/Links.h>
#include <quillmar/OptionsPage.h>
#include <quillmar/Storage.h>
#include <quillmar/StringList.h>
#include <quillmar/UserParts.h>
#include <quillmar/Version.h>

#if QM_VERSION_NUMBER < 100
#error "the version is not a number"
#endif

// The lists name types that these headers declare.
#define DECLARE(name, result, parameters, arguments) \
  typedef result(QM_STDCALL* name##Pointer) parameters;
#define DECLARE_NEEDED(need, name, result, parameters, arguments) \
  typedef result(QM_CDECL* name##Pointer) parameters;
QM_STORAGE_FUNCTIONS(DECLARE)
QM_LINK_FUNCTIONS(DECLARE)
QM_CAD_FUNCTIONS(DECLARE_NEEDED)
QM_CAD_2D_FUNCTIONS(DECLARE_NEEDED)

const char* VersionInCpp() { return QM_VERSION_TEXT; }

// A table of functions bound by name.
struct Links {
  QM_LINK_FUNCTIONS(QM_BOUND_STDCALL)
};

bool CanTranslate(const Links& links) { return static_cast<bool>(links.Link_Translate); }
