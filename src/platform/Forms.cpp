#include "platform/Forms.h"

#include <stdexcept>

namespace quillmar::platform {

FormField& Form::Field(const std::string& name) {
  for (FormField& field : fields) {
    if (field.name == name) return field;
  }
  throw std::out_of_range("form field " + name);
}

}  // namespace quillmar::platform
