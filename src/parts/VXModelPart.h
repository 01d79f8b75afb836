// A model that the calculation host writes into a file of a format that the CAD imports.
#pragma once

#include "parts/VXPart.h"

namespace quillmar {

class VXModelPart : public VXPart {
 public:
  using VXPart::VXPart;

  // Writes the file. A session without 2D output has none and leaves everything as it is.
  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool WantsDescription() override;
};

}  // namespace quillmar
