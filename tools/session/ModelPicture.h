// Bodies that the calculation host wrote as facets (STL text, millimetres): a page shows and turns
// them as it does the modeller's solids.
#pragma once

#include <optional>
#include <string>

namespace session {

// Nothing when the text holds no facet, or a damaged one.
std::optional<std::string> GlbOfFacets(const std::string& facets);
// An isometric picture of the edges that face the viewer.
std::optional<std::string> SvgOfFacets(const std::string& facets);

}  // namespace session
