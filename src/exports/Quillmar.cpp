// The exported functions: each checks its pointers and forwards. Nothing is thrown across them,
// and before the library has started, or after it was taken down, they return their failure
// result.
#include "quillmar/Exports.h"

#include <exception>
#include <memory>

#include "app/QuillmarApp.h"
#include "commands/CalculationStarts.h"
#include "parts/ObtainProtocol.h"
#include "platform/EntryPoint.h"

namespace {

using quillmar::QuillmarApp;

// The one object of the process.
std::unique_ptr<QuillmarApp> application;

// Runs an export on the application. An exception is this module's own fault or a lack of memory:
// it ends here, with a report and the failure result.
template <class Result, class Operation>
Result Forward(const char* name, Result failure, Operation operation) {
  if (!application) return failure;
  try {
    return operation(*application);
  } catch (const std::exception& error) {
    try {
      application->Services().errors.ReportError(std::string(name) + ": " + error.what(), QM_HERE);
    } catch (...) {
      return failure;
    }
    return failure;
  } catch (...) {
    return failure;
  }
}

std::string Text(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

namespace quillmar {

bool OnLibraryAttach(QmModule self) {
  try {
    auto started = std::make_unique<QuillmarApp>(self);
    if (!started->Start()) return false;
    application = std::move(started);
    return true;
  } catch (...) {
    return false;
  }
}

void OnLibraryDetach(bool processEnding) {
  if (!application) return;
  try {
    if (processEnding) {
      application->Abandon();
    } else {
      application->ShutDown();
    }
  } catch (...) {
    application->Abandon();
  }
  application.reset();
}

}  // namespace quillmar

int QM_CDECL LoginCad(const char* cadModuleName, int showFlag, int modelFileKind,
                      const char* modelDirName, const char* modelExt, const char* featureExt,
                      const char* settingsName, int* status) {
  return Forward("LoginCad", 0, [&](QuillmarApp& app) {
    return app.Login().LoginCad({.cadModuleName = Text(cadModuleName),
                                 .showFlag = showFlag,
                                 .modelFileKind = modelFileKind,
                                 .modelDirName = Text(modelDirName),
                                 .modelExt = Text(modelExt),
                                 .featureExt = Text(featureExt),
                                 .settingsName = Text(settingsName)},
                                status);
  });
}

int QM_CDECL LogoutCad(void) {
  return Forward("LogoutCad", 1, [](QuillmarApp& app) { return app.Login().LogoutCad(); });
}

void QM_CDECL StartCalculation(const char* dataFile, const char* standard) {
  Forward("StartCalculation", 0, [&](QuillmarApp& app) {
    quillmar::StartCalculation(app.Services(), Text(dataFile), Text(standard));
    return 0;
  });
}

int QM_CDECL ShowDialogUT(const char* protocolId) {
  return Forward("ShowDialogUT", 0, [&](QuillmarApp& app) {
    return app.Services().host.ShowCalculation(Text(protocolId));
  });
}

int QM_CDECL Set2dFileType(int fileType) {
  return Forward("Set2dFileType", 0,
                 [&](QuillmarApp& app) { return app.Services().driver.Bind2d(fileType) ? 1 : 0; });
}

int QM_STDCALL ObtainProtocol(const char* partName) {
  return Forward("ObtainProtocol", 0, [&](QuillmarApp& app) {
    return quillmar::ObtainProtocol(app.Services(), Text(partName)) ? 1 : 0;
  });
}

int QM_CDECL CallUTFunction(int number) {
  return Forward("CallUTFunction", 1, [&](QuillmarApp& app) {
    app.Queue().Queue(number);
    return 1;
  });
}

QmModule QM_CDECL GetCadHinstance(void) {
  return Forward("GetCadHinstance", QmModule{nullptr},
                 [](QuillmarApp& app) { return app.Services().driver.addIn; });
}
