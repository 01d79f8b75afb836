// The standards of calculations that stand for those of the CAD, as the add-in's own ini file maps
// them. Kept for the session; calculations are started in the standard that the caller names.
#pragma once

#include <map>
#include <string>

namespace quillmar {

class CadStandards {
 public:
  // Keeps the add-in's ini file and reads its mapping; false, and the map empty, when the file
  // lists no standards (section "General", key "Standards", names joined by ",").
  bool Load(const std::string& iniPath);
  void Clear();

  const std::string& IniFile() const { return iniFile; }
  // CAD standard to calculation standard.
  const std::map<std::string, std::string>& Map() const { return standards; }

 private:
  std::string iniFile;
  std::map<std::string, std::string> standards;
};

}  // namespace quillmar
