#include "parts/VXCalcPart.h"

#include "protocol/ProtocolVocabulary.h"

namespace quillmar {

bool VXCalcPart::CreatePartFile() { return true; }
bool VXCalcPart::WantsDescription() { return true; }

// The calculation's own; the part's caption describes what it made.
std::string VXCalcPart::CalculationCaption() {
  std::string title;
  protocol.GetKeyWord(section::kGlobals, keyword::kCaption, title);
  return title;
}

bool VXCalcPart::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  const CadDriverTable& driver = services.driver;
  const std::string title = CalculationCaption();
  const char* id = protocol.GetProtocolID().c_str();
  if (driver.InsertCalculationEx2) {
    // A CAD that takes the parameters names the file itself.
    std::string parameters;
    return PrepareParameters(parameters, QM_HERE) &&
           driver.InsertCalculationEx2(id, connection.c_str(), parameters.c_str(), title.c_str(),
                                       filePath.c_str()) != 0;
  }
  if (driver.InsertCalculationEx) {
    if (!MakeFileName(false, true)) {
      return Fail("Cannot insert Calculation - can't create filename", QM_HERE);
    }
    return driver.InsertCalculationEx(id, connection.c_str(), title.c_str(), filePath.c_str()) != 0;
  }
  return driver.InsertCalculation(id, connection.c_str(), title.c_str()) != 0;
}

bool VXCalcPart::ChangeInCad(const std::string& connection, const ExtDataPairs&) {
  const std::string title = CalculationCaption();
  return ChangeByState(connection, QM_HERE, [&] { return ChangeFully(connection, title); });
}

// The insert function tells whether the CAD works with parameters.
bool VXCalcPart::ChangeFully(const std::string& connection, const std::string& title) {
  const CadDriverTable& driver = services.driver;
  const char* id = protocol.GetProtocolID().c_str();
  if (driver.InsertCalculationEx2 && driver.ChangeCalculationEx2) {
    std::string parameters;
    return PrepareParameters(parameters, QM_HERE) &&
           driver.ChangeCalculationEx2(id, connection.c_str(), parameters.c_str(), title.c_str()) !=
               0;
  }
  return driver.ChangeCalculation(id, connection.c_str(), title.c_str()) != 0;
}

}  // namespace quillmar
