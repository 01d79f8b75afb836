// Exports of the calculation link: starts, notifications, and what is handed to the calculation
// host as it is.
#include "Forward.h"
#include "commands/CalculationStarts.h"
#include "commands/DataWizard.h"
#include "quillmar/Exports.h"

using quillmar::Forward;
using quillmar::QuillmarApp;
using quillmar::Text;

namespace {

// A call of one host method.
int CallHost(const char* name, int method, const quillmar::platform::AutomationArguments& values) {
  return Forward(name, 0,
                 [&](QuillmarApp& app) { return app.Services().host.CallInt(method, values); });
}

}  // namespace

// --- starts ---

void QM_CDECL StartCalculation(const char* dataFile, const char* standard) {
  Forward("StartCalculation", 0, [&](QuillmarApp& app) {
    quillmar::StartCalculation(app.Services(), Text(dataFile), Text(standard));
    return 0;
  });
}

int QM_CDECL StartNewBC(void) {
  return Forward("StartNewBC", 0, [](QuillmarApp& app) {
    return quillmar::StartBoltedConnection(app.Services()) ? 1 : 0;
  });
}

int QM_CDECL CallOptimGM(const char* protocolId) {
  return Forward("CallOptimGM", 0, [&](QuillmarApp& app) {
    return quillmar::StartGroupOptimization(app.Services(), Text(protocolId)) ? 1 : 0;
  });
}

int QM_CDECL ShowDialogUT(const char* protocolId) {
  return Forward("ShowDialogUT", 0, [&](QuillmarApp& app) {
    return app.Services().host.ShowCalculation(Text(protocolId));
  });
}

int QM_CDECL ShowMCWDialog(const char* protocolId) {
  return Forward("ShowMCWDialog", 1, [&](QuillmarApp& app) {
    app.Services().host.ShowCalculation(Text(protocolId));
    return 1;
  });
}

int QM_CDECL MCWRecalculate(const char* reference, int /*flag*/, int first, int second) {
  return Forward("MCWRecalculate", 0, [&](QuillmarApp& app) {
    return quillmar::EditBoltedConnection(app.Services(), Text(reference), first, second);
  });
}

// --- notifications and what follows from them ---

int QM_CDECL ReceiveMessage(int number, const char* text) {
  return Forward("ReceiveMessage", 1, [&](QuillmarApp& app) {
    app.Receiver().Receive(number, Text(text));
    return 1;
  });
}

int QM_CDECL SetMeasureValue(double value) {
  return Forward("SetMeasureValue", 1, [&](QuillmarApp& app) {
    app.Measure().SetValue(value);
    return 1;
  });
}

void QM_CDECL DoWDOperation(int first, int second, int third) {
  Forward("DoWDOperation", 0, [&](QuillmarApp& app) {
    quillmar::DoWizardOperation(app.Services(), {first, second, third});
    return 0;
  });
}

// --- handed to the host ---

int QM_CDECL CorrectProtocol(const char* protocolId) {
  return CallHost("CorrectProtocol", QM_HOST_ANNOUNCE, {Text(protocolId)});
}

int QM_CDECL EditLinks(const char* protocolId) {
  return CallHost("EditLinks", QM_HOST_EDIT_LINKS, {Text(protocolId)});
}

int QM_CDECL EditOneLink(const char* protocolId, const char* link) {
  return CallHost("EditOneLink", QM_HOST_EDIT_ONE_LINK, {Text(protocolId), Text(link)});
}

int QM_CDECL InitSolution(const char* protocolId) {
  return CallHost("InitSolution", QM_HOST_INIT_SOLUTION, {Text(protocolId)});
}

int QM_CDECL SolveOneLink(const char* protocolId, const char* link) {
  return CallHost("SolveOneLink", QM_HOST_SOLVE_ONE_LINK, {Text(protocolId), Text(link)});
}

int QM_CDECL Synchronize(const char* protocolId, int mode) {
  return CallHost("Synchronize", QM_HOST_SYNCHRONIZE, {Text(protocolId), mode});
}

int QM_CDECL EndSolution(void) {
  return Forward("EndSolution", 0, [](QuillmarApp& app) {
    return app.Services().host.CallNone(QM_HOST_END_SOLUTION, {}) ? 1 : 0;
  });
}

int QM_CDECL GenerateFamTable(const char* protocolId, const char* table) {
  return Forward("GenerateFamTable", 0, [&](QuillmarApp& app) {
    return app.Services().host.CallIntIfOffered(QM_HOST_NAME_FAMILY_TABLE, QM_HOST_FAMILY_TABLE,
                                                {Text(protocolId), Text(table)});
  });
}
