// The model that stands in the CAD, as text: tree, parameters with units, files, properties.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "drawboard/OrderedJson.h"

namespace session {

using DocumentJson = drawboard::OrderedJson;

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

// Words and texts of an object (UTF-8), empty when there is no such object.
std::string KindOf(const DocumentJson& document, const std::string& objectName);
std::string ConnectionOf(const DocumentJson& document, const std::string& objectName);

// Unit of the masses that the CAD gives.
const char* MassUnitOf(const DocumentJson& document);

// Name of the first object of that kind.
std::optional<std::string> ObjectOfKind(const DocumentJson& document, const std::string& kind);

// Name and value of each parameter of an object. What stands on a sheet has none in the CAD: they
// are those that its reference text carries.
std::vector<std::pair<std::string, std::string>> ParametersOf(const DocumentJson& object);
std::vector<std::pair<std::string, std::string>> ParametersOf(const DocumentJson& document,
                                                              const std::string& objectName);

// Value of a parameter of the first of the objects that has one of that name.
std::optional<std::string> ParameterOf(const DocumentJson& document,
                                       const std::vector<std::string>& objectNames,
                                       const std::string& parameter);

// What each object owes its place to, by its name.
using Origins = std::map<std::string, std::vector<std::string>>;

// The tree for people, lines of about `width` characters.
std::string ModelText(const DocumentJson& document, const Origins& origins, std::size_t width);

// True for a parameter of a long numbered row, such as a point of a cam's profile, of which people
// see only the ends.
bool BelongsToLongRow(const DocumentJson& object, const std::string& parameter);

// Characters of a UTF-8 text, for columns.
std::size_t WidthOf(const std::string& utf8);
std::string Padded(const std::string& utf8, std::size_t width);

}  // namespace session
