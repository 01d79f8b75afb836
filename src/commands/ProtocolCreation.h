// Protocols that are made before any calculation has run, so that a CAD object can carry a
// reference text from the start. A protocol that was made before a failure stays in the store.
#pragma once

#include <string>

#include "parts/PartServices.h"

namespace quillmar {

inline constexpr const char* kUserPartDataFile = "KeelData|userpart";
inline constexpr const char* kAssemblyDataFile = "KeelData|asmpart";
inline constexpr int kAssemblyType = 10;  // TypeOfPart of assemblies

enum class NewProtocol { UserPart, Assembly, ConnectedAssembly };

// Makes a new protocol and writes the items of its kind; false at the first write that fails.
bool FillNewProtocol(VXProtocol& protocol, NewProtocol kind);
// What the user sees as the object's name.
bool WriteNameItems(VXProtocol& protocol, const std::string& name);
// Makes the open protocol a calculation that is still to be run; false at the first write that
// fails.
bool InitializeCalculation(VXProtocol& protocol, const char* dataFile);

// What a new protocol is known by.
struct ProtocolTexts {
  std::string identifier;
  std::string reference;
};

// A user part's or an assembly's protocol; a null caption leaves the name items out.
bool CreateNamedProtocol(const PartServices& services, NewProtocol kind, const char* caption,
                         ProtocolTexts& texts);

struct PartRequest {
  std::string dataFile;
  std::string standard;
  std::string viewKey;
  std::string parameters;  // "name,value," list
};
bool CreatePartProtocol(const PartServices& services, const PartRequest& request,
                        ProtocolTexts& texts);

}  // namespace quillmar
