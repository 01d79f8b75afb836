// The model that stands in the CAD, as text: tree, parameters with units, files, properties.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace session {

using DocumentJson = nlohmann::ordered_json;

// Names of the objects that belong to a protocol, under its present or a former identifier.
std::vector<std::string> ObjectsOfProtocol(const DocumentJson& document,
                                           const std::string& protocolId);

// Names of the objects that are views of the calculation of a protocol.
std::vector<std::string> ViewsOfProtocol(const DocumentJson& document,
                                         const std::string& protocolId);

// How often an object was changed; -1 when the document has no such object.
int ChangesOf(const DocumentJson& document, const std::string& objectName);

// Present protocol identifier of an object, empty when there is no such object.
std::string ProtocolOf(const DocumentJson& document, const std::string& objectName);

// The tree for people, lines of about `width` characters.
std::string ModelText(const DocumentJson& document, std::size_t width);

// Characters of a UTF-8 text, for columns.
std::size_t WidthOf(const std::string& utf8);
std::string Padded(const std::string& utf8, std::size_t width);

}  // namespace session
