// A feature that is added to an existing part of the CAD.
#pragma once

#include "parts/VXPart.h"

namespace quillmar {

class VXFeaturePart : public VXPart {
 public:
  using VXPart::VXPart;

  bool GetModelFilePath(std::string& path) override;
  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ReadBackFromCad() override;
  bool WantsDescription() override;
  std::string GetFileExtension() override;
  std::string GetFileTypeName() override;
  std::string DescriptionSuffix() override;
};

}  // namespace quillmar
