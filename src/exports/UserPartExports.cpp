// The exports of user parts and of the wizards.
#include <cstring>

#include "Forward.h"
#include "quillmar/Exports.h"
#include "userparts/DataValues.h"
#include "userparts/DesktopTemplate.h"
#include "userparts/FemCalculation.h"
#include "userparts/ImportWizard.h"

using quillmar::Forward;
using quillmar::QuillmarApp;
using quillmar::Text;

int QM_CDECL AddUTDXFPart(void) {
  return Forward("AddUTDXFPart", 0,
                 [](QuillmarApp& app) { return app.TheUserParts().AddUTDXFPart(); });
}

int QM_CDECL AddUTPart(void) {
  return Forward("AddUTPart", 0, [](QuillmarApp& app) { return app.TheUserParts().AddUTPart(); });
}

int QM_CDECL CallFem(void) {
  return Forward("CallFem", 0, [](QuillmarApp& app) { return quillmar::CallFem(app.Services()); });
}

int QM_CDECL DataWizard(void) {
  return Forward("DataWizard", 0,
                 [](QuillmarApp& app) { return quillmar::DataWizard(app.Services()); });
}

int QM_CDECL GetDataValues(const char* referenceText, const char* names, char* out, int outSize) {
  return Forward("GetDataValues", 0, [&](QuillmarApp& app) {
    const std::string values =
        quillmar::GetDataValues(app.Services(), Text(referenceText), Text(names));
    const int length = static_cast<int>(values.size());
    if (out != nullptr && length < outSize) std::memcpy(out, values.c_str(), values.size() + 1);
    return length;
  });
}

int QM_CDECL ImportWizard(int type, int units, const char* fileName) {
  return Forward("ImportWizard", 1, [&](QuillmarApp& app) {
    return quillmar::ImportWizard(app.Services(), type, units, Text(fileName));
  });
}
