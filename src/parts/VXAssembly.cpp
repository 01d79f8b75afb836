#include "parts/VXAssembly.h"

namespace quillmar {

bool VXAssembly::WantsDescription() { return false; }

bool VXAssembly::InsertIntoCad(const std::string& connection, const ExtDataPairs&) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  return services.driver.InsertAssembly(protocol.GetProtocolID().c_str(), parameters.c_str(),
                                        connection.c_str()) != 0 ||
         Fail("Cannot insert assembly protocol", QM_HERE);
}

bool VXAssembly::ChangeInCad(const std::string& connection, const ExtDataPairs& pairs) {
  std::string parameters;
  if (!PrepareParameters(parameters, QM_HERE)) return false;
  return ChangeByState(connection, QM_HERE, [&] {
    const CadDriverTable& driver = services.driver;
    const char* id = protocol.GetProtocolID().c_str();
    const bool changed =
        driver.ChangeAssemblyEx
            ? driver.ChangeAssemblyEx(id, parameters.c_str(), connection.c_str(), pairs.Get(),
                                      pairs.Count()) != 0
            : driver.ChangeAssembly(id, parameters.c_str(), connection.c_str()) != 0;
    return changed || Fail("Cannot change assembly protocol", QM_HERE);
  });
}

}  // namespace quillmar
