// Who drives the module: set by login and logout, read everywhere.
#pragma once

#include <string>

namespace quillmar {

struct CadSession {
  std::string cadModuleName;
  int showFlag = 0;       // 0x10 enables the toolbar, 0x40 keeps identities of shared parts
  int modelFileKind = 0;  // 0: no 2D output; -1 from the group manager: no CAD
  std::string modelDirName;
  std::string modelExt;
  std::string featureExt;
  std::string settingsName;
  bool groupManager = false;  // Grupova drives: no CAD of its own, working copies are kept
  bool optimizer = false;     // optara drives
  bool loggedOut = true;
  int ipcLoginResult = 0;     // written by the inter-process library
  bool noActivation = false;  // an optimisation runs: leave the CAD window where it is
};

// Bits of showFlag.
inline constexpr int kShowToolbarCommands = 0x10;
inline constexpr int kKeepSharedIdentity = 0x40;

}  // namespace quillmar
