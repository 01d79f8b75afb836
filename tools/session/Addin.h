// The libraries of the session: the CAD's add-in and the module, loaded by full path, and their
// functions by name.
#pragma once

#include <stdexcept>
#include <string>

#include "drawboard/Drawboard.h"
#include "platform/Modules.h"
#include "quillmar/CadDriver.h"
#include "quillmar/Exports.h"

namespace session {

// A step of the session that did not succeed; the text is for the user.
class SessionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CadFunctions {
#define SESSION_FIELD(name, result, parameters, arguments) \
  result(QM_CDECL* name) parameters = nullptr;
  DRAWBOARD_FUNCTIONS(SESSION_FIELD)
#undef SESSION_FIELD
};

// What the add-in does with a drawing that the module made for it.
struct SheetFunctions {
#define SESSION_FIELD(need, name, result, parameters, arguments) \
  result(QM_CDECL* name) parameters = nullptr;
  QM_CAD_2D_FUNCTIONS(SESSION_FIELD)
#undef SESSION_FIELD
};

struct ModuleFunctions {
#define SESSION_FIELD(name, convention, result, parameters, arguments) \
  result(convention* name) parameters = nullptr;
  QM_EXPORTS(SESSION_FIELD)
#undef SESSION_FIELD
};

// The user wants no more of the session.
class SessionInterrupted : public SessionError {
 public:
  SessionInterrupted() : SessionError("It was interrupted.") {}
};

// The CAD that runs in this process.
class Cad {
 public:
  // Throws a SessionError when the library or one of its functions is missing.
  explicit Cad(const std::string& path);

  CadFunctions call;
  SheetFunctions sheet;

  bool HasMessages();
  // What the CAD had to say, since it was asked last; UTF-8.
  std::string TakeMessages();
  // The document as JSON text in UTF-8.
  std::string DocumentText();

 private:
  quillmar::platform::Library library;
};

class Module {
 public:
  explicit Module(const std::string& path);

  ModuleFunctions call;

 private:
  quillmar::platform::Library library;
};

}  // namespace session
