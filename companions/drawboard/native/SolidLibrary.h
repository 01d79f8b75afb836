// The border to the library of solids, Solids.dll beside the add-in: everything that needs
// OpenCASCADE stands behind it, so that the add-in itself loads without. Both are built together.
// Nothing is thrown across.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawboard/Design.h"

namespace drawboard {

// A body of an assembly.
struct AssemblyBody {
  std::string part;  // name of its product; bodies with one name and design are one product
  std::string name;  // of the instance; UTF-8, as all names here
  Design design;
};

// Solids are built once and kept for the life of the process, the last few dozen of them. What
// gives nothing leaves the reason in `problem`.
class SolidLibrary {
 public:
  // Properties of a material of 1 kg/mm3, in millimetres.
  virtual std::optional<MassProperties> Weigh(const Design& design, std::string& problem) = 0;
  virtual std::optional<ExchangeFiles> Export(const Design& design, const std::string& name,
                                              std::string& problem) = 0;
  virtual std::optional<ExchangeFiles> ExportAssembly(const std::vector<AssemblyBody>& bodies,
                                                      const std::string& name,
                                                      std::string& problem) = 0;

 protected:
  ~SolidLibrary() = default;
};

// What the library exports: SolidLibrary* Drawboard_Solids(). It is never unloaded.
inline constexpr const char* kSolidLibraryFile = "Solids.dll";
inline constexpr const char* kSolidLibraryFunction = "Drawboard_Solids";

}  // namespace drawboard
