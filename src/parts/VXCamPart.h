// A cam: its profile goes to the CAD point by point, or as parameters to a CAD that builds it from
// those.
#pragma once

#include <vector>

#include "parts/VXPart.h"

namespace quillmar {

class VXCamPart : public VXPart {
 public:
  using VXPart::VXPart;

  bool GetModelFilePath(std::string& path) override;
  bool CreatePartFile() override;
  bool InsertIntoCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) override;
  bool ReadBackFromCad() override;
  bool WantsDescription() override;

 private:
  void LoadProfile();
  bool InsertByProfile(const std::string& connection, const ExtDataPairs& pairs);
  bool ChangeByDriver(const std::string& parameters, const std::string& connection,
                      const ExtDataPairs& pairs);

  // Cartesian coordinates of the profile points, in the base unit.
  std::vector<double> first;
  std::vector<double> second;
  double baseValue = 0.0;
  std::string baseUnit;
  int pointCount = 0;
};

}  // namespace quillmar
