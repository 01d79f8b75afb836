// A part made from a library model whose parameters the calculation sets.
#pragma once

#include "parts/VXPart.h"

namespace quillmar {

class VXParamPart : public VXPart {
 public:
  using VXPart::VXPart;

  // The model id itself when it is the path of a file, else the library's model.
  bool GetModelFilePath(std::string& path) override;
  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ReadBackFromCad() override;
  // User parts have no description of their own.
  bool WantsDescription() override;

 private:
  void ApplyGenerationRules(std::string& parameters, const std::string& modelPath);
  bool SwitchConfiguration(const std::string& connection);
  bool ChangeFully(const std::string& parameters, const std::string& modelPath,
                   const std::string& connection, const ExtDataPairs& pairs, bool modelChanged);
  bool ReadConfigurationsBack();
};

}  // namespace quillmar
