// The files that the host draws, read back by their formats' own rules.
#include "hexaplan/host/Shapes.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <tuple>

#include "hexaplan/calculation/SheetFormatCalculation.h"

namespace hexaplan {
namespace {

const Shapes kShapes = {{"OUTLINE", 5, 0, 0, 0, 30}, {"CENTRE", -20, 0, 30, 0}};

int WordAt(const std::string& file, std::size_t word) {
  return static_cast<unsigned char>(file.at(2 * word)) +
         256 * static_cast<unsigned char>(file.at(2 * word + 1));
}

TEST(Shapes, MetafileIsWhole) {
  const std::string file = ToMetafile(kShapes);
  ASSERT_EQ(file.size() % 2, 0u);
  int sum = 0;
  for (std::size_t word = 0; word < 10; ++word) sum ^= WordAt(file, word);
  EXPECT_EQ(WordAt(file, 10), sum);
  constexpr std::size_t kHeader = 11;
  EXPECT_EQ(WordAt(file, kHeader + 3), static_cast<int>(file.size() / 2 - kHeader));
  std::map<int, int> records;
  int longest = 0;
  std::size_t at = kHeader + 9;
  for (int function = -1; function != 0; at += static_cast<std::size_t>(WordAt(file, at))) {
    function = WordAt(file, at + 2);
    longest = std::max(longest, WordAt(file, at));
    ++records[function];
  }
  EXPECT_EQ(2 * at, file.size()) << "the empty record is the last";
  EXPECT_EQ(WordAt(file, kHeader + 6), longest);
  EXPECT_EQ(records[0x0418], 1) << "circles";
  EXPECT_EQ(records[0x0213], 1) << "lines";
}

// Every edge belongs to two triangles, which run along it in opposite directions, and the volume
// inside is that of the body.
TEST(Shapes, FacetsEncloseTheBody) {
  const TurnedBody bodies[] = {{{{10, 5}, {20, 8}, {5, 3}}, 0}, {{{30, 25}}, 10}};
  const double areas[] = {10 * 25.0 + 20 * 64.0 + 5 * 9.0, 30 * (625.0 - 100.0)};
  for (int i = 0; i < 2; ++i) {
    std::istringstream words(ToFacets(bodies[i], "body"));
    std::map<std::pair<std::string, std::string>, int> edges;
    double volume = 0;
    std::vector<std::array<double, 3>> corners;
    std::vector<std::string> names;
    for (std::string word; words >> word;) {
      if (word != "vertex") continue;
      std::array<double, 3> corner{};
      words >> corner[0] >> corner[1] >> corner[2];
      std::ostringstream name;
      name << corner[0] << " " << corner[1] << " " << corner[2];
      corners.push_back(corner);
      names.push_back(name.str());
      if (corners.size() < 3) continue;
      const auto& [a, b, c] = std::tie(corners[0], corners[1], corners[2]);
      volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
                 a[2] * (b[0] * c[1] - b[1] * c[0])) /
                6.0;
      for (std::size_t k = 0; k < 3; ++k) {
        ++edges[{names[k], names[(k + 1) % 3]}];
        --edges[{names[(k + 1) % 3], names[k]}];
      }
      corners.clear();
      names.clear();
    }
    EXPECT_GT(edges.size(), 100u);
    for (const auto& [edge, balance] : edges) EXPECT_EQ(balance, 0) << edge.first;
    const double expected = areas[i] * 3.14159265;
    EXPECT_NEAR(volume, expected, 0.01 * expected);
  }
}

TEST(Shapes, SheetsLieOnTheirSideAndAreOfTheASeries) {
  for (int number = 0; number < 4; ++number) {
    EXPECT_EQ(SizeOfSheet(number + 1).width, SizeOfSheet(number).height);
  }
  Inputs inputs;
  inputs.SetStored("xxScale", "0.5");
  const CalculatedPart part = SheetFormats().Run(inputs).at(0);
  EXPECT_EQ(part.size, "A3 1:2");
  EXPECT_EQ(static_cast<int>(part.kind), 12);
  inputs.SetStored("xxScale", "0");
  EXPECT_THROW(SheetFormats().Run(inputs), InputError);
}

}  // namespace
}  // namespace hexaplan
