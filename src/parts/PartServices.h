// What part objects work with. One struct of the application, handed to every part: it shows all
// that a part can touch.
#pragma once

#include <memory>

#include "base/ErrorLog.h"
#include "base/InstallationPaths.h"
#include "base/LanguageTable.h"
#include "bom/BomTags.h"
#include "calclink/CalcHost.h"
#include "conversion/ProtocolConverter.h"
#include "naming/UniqueIds.h"
#include "options/FileNameSettings.h"
#include "options/OptionsStore.h"
#include "protocol/VXProtocol.h"
#include "session/BoltedConnectionLibrary.h"
#include "session/CadDriverTable.h"
#include "session/CadSession.h"

namespace quillmar {

struct PartServices {
  const CadSession& session;
  CadDriverTable& driver;
  const BoltedConnectionLibrary& bolted;
  CalcHost& host;
  OptionsStore& options;
  FileNameSettings& fileNames;
  const LanguageTable& texts;
  const InstallationPaths& paths;
  BomTags& tags;
  std::unique_ptr<ProtocolConverter>& converter;  // null before the first login
  UniqueIds& ids;
  const ProtocolContext& protocols;
  ErrorLog& errors;
  double& axisOverlap;  // of drawings, as the add-in set it
};

}  // namespace quillmar
