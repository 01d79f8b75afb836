// Pictures for people: of drawings, metafiles and faceted bodies.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

#include "session/DrawingPicture.h"
#include "session/ModelPicture.h"

namespace {

using testing::HasSubstr;
using testing::Not;

std::string Drawing(const std::string& entities) {
  return "0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
}

}  // namespace

TEST(DrawingPicture, LinesCirclesArcsAndPolylinesAreDrawnWithYUpwards) {
  const auto svg = session::SvgOfDxf(Drawing(
      "  0\r\nLINE\r\n  8\r\nOUTLINE\r\n 10\r\n0\r\n 20\r\n0\r\n 11\r\n 40\r\n 21\r\n20\r\n"
      "0\nPOLYLINE\n70\n1\n0\nVERTEX\n10\n0\n20\n0\n0\nVERTEX\n10\n5\n20\n-10\n0\nSEQEND\n"
      "0\nARC\n8\nCENTRE2\n10\n20\n20\n0\n40\n10\n50\n350\n51\n0\n0\nTEXT\n10\n900\n20\n900\n"));
  ASSERT_TRUE(svg);
  EXPECT_THAT(*svg, HasSubstr("viewBox=\"-2 -22 44 34\""));
  EXPECT_THAT(*svg, HasSubstr("<path d=\"M0 0L40 -20\"/>"));
  EXPECT_THAT(*svg, HasSubstr("<path d=\"M0 0L5 10Z\"/>"));
  EXPECT_THAT(*svg, HasSubstr("<path d=\"M29.8481 1.73648L29.9619 0.871557L30 0\" stroke-width"));
}

TEST(DrawingPicture, WhatCannotBeDrawnGivesNone) {
  for (const std::string& text :
       {std::string(), std::string("\xFF\x00 no dxf", 9), Drawing(""),
        Drawing("0\nVERTEX\n10\n1\n"), Drawing("0\nPOLYLINE\n0\nVERTEX\n10\n1\n20\n1\n"),
        std::string("0\nLINE\n10\n1\n")}) {
    EXPECT_FALSE(session::SvgOfDxf(text)) << text;
  }
  const auto odd = session::SvgOfDxf(Drawing("0\nLINE\n10\nnan\n20\n\n11\n1e999\n21\nx\n"));
  ASSERT_TRUE(odd);
  EXPECT_THAT(*odd, Not(HasSubstr("nan")));
  EXPECT_TRUE(session::SvgOfDxf(Drawing("0\nARC\n40\n1\n50\n0\n51\n1e300\n")));
  EXPECT_FALSE(session::SvgOfDxf(Drawing("0\nPOLYLINE\n70\n1e300\n0\nSEQEND\n")));
}

namespace {

// A placeable metafile of these records; what its headers say beside the mark is not looked at.
std::string Metafile(const std::vector<std::vector<int>>& records) {
  std::vector<int> words = {0xCDD7, 0x9AC6};
  words.resize(20);
  for (const auto& record : records) {
    words.insert(words.end(), {static_cast<int>(record.size()) + 2, 0});
    words.insert(words.end(), record.begin(), record.end());
  }
  std::string bytes;
  for (const int word : words) {
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>((word >> 8) & 0xFF);
  }
  return bytes;
}

}  // namespace

TEST(DrawingPicture, MetafilesAreDrawnWithYDownwards) {
  constexpr int kMoveTo = 0x0214, kLineTo = 0x0213, kEllipse = 0x0418;
  const std::vector<std::vector<int>> records = {
      {kMoveTo, -5, 10}, {kLineTo, 15, 30}, {kEllipse, 30, 40, 10, 20}, {kLineTo, 1}, {0}};
  const std::string file = Metafile(records);
  const auto svg = session::SvgOfMetafile(file);
  ASSERT_TRUE(svg);
  EXPECT_THAT(*svg, HasSubstr("<path d=\"M10 -5L30 15\"/>"));
  EXPECT_THAT(*svg, HasSubstr("<path d=\"M40 20L"));
  EXPECT_THAT(*svg, HasSubstr("viewBox=\"8.25 -6.75 33.5 38.5\""));
  EXPECT_FALSE(session::SvgOfMetafile(file.substr(0, 41)));
  EXPECT_FALSE(session::SvgOfMetafile(file.substr(2)));
  EXPECT_FALSE(session::SvgOfMetafile(Metafile({{kLineTo, 1, 2}})));
}

// A tetrahedron with one corner at the origin: three of its facets turn away from the viewer.
TEST(ModelPicture, FacetsBecomeTrianglesAndTheEdgesThatAreSeen) {
  const char* corners[] = {"0 0 0", "20 0 0", "0 20 0", "0 0 20"};
  const int facets[][3] = {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}};
  std::string text = "solid a\n";
  for (const auto& facet : facets) {
    for (const int corner : facet) text += std::string("vertex ") + corners[corner] + "\n";
  }
  const auto svg = session::SvgOfFacets(text);
  ASSERT_TRUE(svg);
  EXPECT_EQ(std::count(svg->begin(), svg->end(), 'M'), 3) << *svg;
  EXPECT_THAT(*svg, HasSubstr("14.142 8.165"));
  const auto glb = session::GlbOfFacets(text);
  ASSERT_TRUE(glb);
  const auto number = [&](std::size_t at) {
    std::uint32_t value = 0;
    std::memcpy(&value, glb->data() + at, sizeof value);
    return value;
  };
  EXPECT_EQ(number(8), glb->size());
  EXPECT_EQ(20 + number(12) + 8 + 4 * 12 * 4, glb->size());
  EXPECT_THAT(*glb, HasSubstr("\"count\":12"));
  EXPECT_THAT(*glb, HasSubstr("\"max\":[20,20,20]"));
  EXPECT_FALSE(session::SvgOfFacets("solid a\nendsolid a\n"));
  EXPECT_FALSE(session::GlbOfFacets("vertex 1 2 3 vertex"));
}
