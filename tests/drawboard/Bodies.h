// Parts of library models, whose bodies the kernels know.
#pragma once

#include "CadAddin.h"

inline constexpr const char* kGearModel = "C:\\Models\\SpurGear.dbp";
inline constexpr const char* kShaftModel = "C:\\Models\\Shaft.dbp";

class Bodies : public CadAddin {
 protected:
  int Insert(const char* model, const std::string& id, const std::string& parameters,
             const std::string& file = "") {
    return cad.InsertParamPart(id.c_str(), model, ("*view*,V," + parameters).c_str(),
                               Reference(id).c_str(), 1, file.c_str(), "A part", nullptr, 0);
  }
  // A shaft "Axle".
  int InsertShaft(const std::string& id, const std::string& parameters) {
    return cad.InsertShaft(id.c_str(), kShaftModel, ("*view*,V," + parameters).c_str(),
                           Reference(id).c_str(), "<ASM>\\Axle.dbp", "Axle", nullptr, 0);
  }
  double VolumeOf(const char* key) {
    double volume = 0;
    EXPECT_EQ(cad.GetPhysicalProperties(key, nullptr, nullptr, nullptr, &volume, nullptr, nullptr,
                                        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              1);
    return volume;
  }
  // Folder of the part files.
  std::string Parts() const { return folder + "\\Gearbox"; }
};
