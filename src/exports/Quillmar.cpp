// The application object, which lives from attach to detach, and the exports of the session.
// Each export checks its pointers and forwards.
#include "quillmar/Exports.h"

#include <memory>

#include "Forward.h"
#include "parts/ObtainProtocol.h"
#include "platform/EntryPoint.h"
#include "quillmar/Version.h"

using quillmar::Forward;
using quillmar::QuillmarApp;
using quillmar::Text;

namespace {

std::unique_ptr<QuillmarApp> application;

}  // namespace

namespace quillmar {

QuillmarApp* Application() { return application.get(); }

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

int QM_CDECL GetQuillmarVersion(void) { return QM_VERSION_NUMBER; }

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

int QM_CDECL GetAssemblyPath(char* path) {
  return Forward("GetAssemblyPath", 0, [&](QuillmarApp& app) {
    return path != nullptr ? app.Services().driver.GetAssemblyPath(path) : 0;
  });
}

int QM_CDECL ReadConfiguration(void) {
  return Forward("ReadConfiguration", 1, [](QuillmarApp& app) {
    app.Services().options.ReadConfiguration();
    return 1;
  });
}

int QM_CDECL SetCadIniFile(const char* iniPath) {
  return Forward("SetCadIniFile", 0,
                 [&](QuillmarApp& app) { return app.Standards().Load(Text(iniPath)) ? 1 : 0; });
}

int QM_CDECL ShowToolbar(int show) {
  return Forward("ShowToolbar", 1, [&](QuillmarApp& app) {
    app.ShowToolbar(show != 0);
    return 1;
  });
}
