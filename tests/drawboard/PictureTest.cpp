// Pictures of drawings for people: DXF as SVG.
#include <gmock/gmock.h>

#include "session/DrawingPicture.h"

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
