// The functions of the CAD add-in, bound by name at login.
#pragma once

#include <string>

#include "quillmar/BoundFunction.h"
#include "quillmar/CadDriver.h"

namespace quillmar {

struct CadDriverTable {
  QM_CAD_FUNCTIONS(QM_BOUND_NEEDED)
  QM_CAD_2D_FUNCTIONS(QM_BOUND_NEEDED)

  // The add-in; null while the table is not usable.
  QmModule addIn = nullptr;
  // Kind of drawing files, given to Bind2d; 2 is DXF.
  int fileType2d = 0;

  bool IsBound() const { return addIn != nullptr; }

  // Looks all functions up in a loaded module; false, and the table empty, when a required one is
  // missing or `module` is null.
  bool Bind(QmModule module);
  // The same for the 2D functions of the add-in that is bound. A missing required one empties the
  // whole table.
  bool Bind2d(int fileType);
};

// The CAD's main window; 0 when the driver does not say.
QmWindow MainWindow(const CadDriverTable& driver);
// The window to bring to the front, by preference the one for activation.
QmWindow WindowForActivation(const CadDriverTable& driver);

}  // namespace quillmar
