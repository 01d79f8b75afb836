// The library that translates drawings into LISP descriptions.
#pragma once

#include <string>

#include "platform/Modules.h"

namespace quillmar {

class LispGenerator {
 public:
  bool IsBound() const { return generate != nullptr; }
  // Loads the library from a folder; false when it or its function is missing. Once bound it stays
  // so, whatever the folder is later.
  bool Bind(const std::string& folder);
  void Unbind();
  // For a process that is ending: forgets the library without freeing it.
  void Abandon() { library.Release(); }

  // Writes "<outputBase>.lsp"; `x` and `y` are the insertion point in the drawing's unit.
  bool GenerateLisp(const std::string& dxfPath, const std::string& outputBase, double x,
                    double y) const;

 private:
  platform::Library library;
  void* generate = nullptr;
};

}  // namespace quillmar
