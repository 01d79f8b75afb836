// Drawings and models of the CAD become parts of the user's own: the CAD exports what is open, a
// template description says where it lies, and the data wizard does the rest.
#pragma once

#include <optional>
#include <string>

#include "parts/PartServices.h"
#include "platform/Dialogs.h"
#include "userparts/LispGenerator.h"
#include "userparts/TemplateFile.h"

namespace quillmar {

class UserParts {
 public:
  explicit UserParts(const PartServices& services);

  // The drawing as a LISP description. 1 when the data wizard was told to start.
  int AddUTPart();
  // The drawings as they are. 1 unless the user cancelled or there is no preview; without a drawing
  // nothing is started.
  int AddUTDXFPart();

  // The generator is loaded at the first AddUTPart and kept until here.
  void Unbind() { lisp.Unbind(); }
  void Abandon() { lisp.Abandon(); }

 private:
  std::optional<platform::UserPartAnswer> Ask() const;
  bool CreateDxfFile(const std::string& path) const;
  std::optional<std::string> CreatePreview(const std::string& begin) const;
  std::string CreateDxfFiles(const std::string& begin) const;
  void ShowGeneratorErrors() const;
  void StartDataWizard(const TemplateFile& file) const;

  const PartServices& services;
  LispGenerator lisp;
};

}  // namespace quillmar
