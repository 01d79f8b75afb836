#include "../CadAddin.h"
#include "platform/native/Machine.h"

std::string AddinPath() {
  quillmar::platform::AttachToImage(ADDIN_FILE);
  return "C:\\Drawboard\\Drawboard.dll";
}
