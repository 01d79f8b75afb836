// Bodies that came as facets: what another program wrote into a model file instead of parameters.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "drawboard/Kernel.h"

namespace drawboard {

// Three corners, in the order of the facet.
using Corner = std::array<double, 3>;
using Facet = std::array<Corner, 3>;

// The facets of an STL text. Throws a BoardError, in words for the designer, when there are none or
// one is damaged.
std::vector<Facet> ReadFacets(std::string_view text);

// Closed, its facets seen from outside run counterclockwise. Lengths in the document's unit, in
// which the calculation wrote them.
class FacetBody {
 public:
  // Of an STL text. Throws a BoardError, in words for the designer, when the facets enclose no
  // body.
  explicit FacetBody(std::string_view text);

  // Of a material of that density, mass per volume.
  MassProperties Weigh(double density) const;
  // The body's shadow along z; a hole that goes through along another axis has an outline too.
  Outlines Draw() const;

 private:
  std::vector<Facet> facets;
};

}  // namespace drawboard
