#include "session/CadDriverTable.h"

#include "base/BindFunction.h"

namespace quillmar {
#define QM_LOOK_UP(need, name, result, parameters, arguments) BindFunction(name, module, #name);
#define QM_MISSING_REQUIRED(name) !name
#define QM_MISSING_OPTIONAL(name) false
#define QM_CHECK(need, name, result, parameters, arguments) \
  missing = missing || QM_MISSING_##need(name);

bool CadDriverTable::Bind(QmModule module) {
  *this = {};
  if (module == nullptr) return false;
  QM_CAD_FUNCTIONS(QM_LOOK_UP)
  bool missing = false;
  QM_CAD_FUNCTIONS(QM_CHECK)
  if (missing) {
    *this = {};
    return false;
  }
  addIn = module;
  return true;
}

bool CadDriverTable::Bind2d(int fileType) {
  const QmModule module = addIn;
  if (module == nullptr) return false;
  QM_CAD_2D_FUNCTIONS(QM_LOOK_UP)
  bool missing = false;
  QM_CAD_2D_FUNCTIONS(QM_CHECK)
  if (missing) {
    *this = {};
    return false;
  }
  fileType2d = fileType;
  return true;
}

#undef QM_LOOK_UP
#undef QM_MISSING_REQUIRED
#undef QM_MISSING_OPTIONAL
#undef QM_CHECK

QmWindow MainWindow(const CadDriverTable& driver) {
  QmWindow window = 0;
  return driver.GetMainHwnd(&window) != 0 ? window : 0;
}

QmWindow WindowForActivation(const CadDriverTable& driver) {
  if (!driver.GetMainHwndForActivation) return MainWindow(driver);
  QmWindow window = 0;
  return driver.GetMainHwndForActivation(&window) != 0 ? window : 0;
}

}  // namespace quillmar
