// The host's drawings as a reader of DXF files sees them that is not ours.
#include "hexaplan/host/DrawingFile.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <memory>

#include "TestMachine.h"

namespace hexaplan {
namespace {

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string output;
  char part[256];
  while (std::fgets(part, sizeof part, pipe.get()) != nullptr) output += part;
  return output;
}

struct Drawn {
  const char* dataFile;
  std::vector<DataParameter> parameters;
  const char* entities;  // numbers by kind and layer
  const char* extents;   // least x and y, most x and y
};

TEST(DrawingFile, IsReadByOthers) {
  const Drawn rows[] = {
      // Centre lines reach a tenth beyond the tip circle.
      {"SPURGEAR",
       {{"da", "100", "mm"}, {"d", "94.5", "mm"}, {"df", "87,5", "mm"}, {"dh", "20", "mm"}},
       "CIRCLE CENTRE 1\nCIRCLE OUTLINE 3\nLINE CENTRE 2\n",
       "-55.000 -55.000 55.000 55.000"},
      {"SPURGEAR",
       {{"da", "3.2", "in"}, {"d", "3", "in"}, {"df", "2.7", "in"}},
       "CIRCLE CENTRE 1\nCIRCLE OUTLINE 2\nLINE CENTRE 2\n",
       "-1.760 -1.760 1.760 1.760"},
      // 50 of diameter 30, then 100 of 40.
      {"SHAFT",
       {{"#spiCount", "2", "ND"},
        {"l_1", "50", "mm"},
        {"d_1", "30", "mm"},
        {"l_2", "100", "mm"},
        {"d_2", "40", "mm"}},
       "LINE CENTRE 1\nLINE OUTLINE 7\n",
       "-7.500 -20.000 157.500 20.000"},
      // A keyway of two straight lines and two half circles of 16, behind a chamfer.
      {"SHAFT",
       {{"#spiCount", "1", "ND"},
        {"l_1", "100", "mm"},
        {"d_1", "40", "mm"},
        {"#spi1Add_1", "1", "ND"},
        {"s1_1", "2", "mm"},
        {"#spiType_1", "3", "ND"},
        {"KEY_LR_1", "10", "mm"},
        {"KEY_L_1", "50", "mm"},
        {"KEY_B_1", "12", "mm"}},
       "LINE CENTRE 1\nLINE OUTLINE 41\n",
       "-5.000 -20.000 105.000 20.000"},
      // Three lengths, each with the edge that it begins with.
      {"SHAFT",
       {{"#spiCount", "1", "ND"},
        {"l_1", "100", "mm"},
        {"d_1", "40", "mm"},
        {"#spiType_1", "2", "ND"},
        {"RR_LR_1", "10", "mm"},
        {"RR_M_1", "2", "mm"},
        {"RR_d1_1", "36", "mm"}},
       "LINE CENTRE 1\nLINE OUTLINE 10\n",
       "-5.000 -20.000 105.000 20.000"},
      // Ten teeth of 16 lines, and a keyway.
      {"GEAR1",
       {{"z", "10", "ND"},
        {"d", "100", "mm"},
        {"da", "120", "mm"},
        {"df", "75", "mm"},
        {"db", "93.969262", "mm"},
        {"s", "15.707963", "mm"},
        {"dh", "30", "mm"},
        {"bk", "8", "mm"},
        {"tk2", "3.3", "mm"}},
       "CIRCLE CENTRE 1\nCIRCLE OUTLINE 1\nLINE CENTRE 2\nLINE OUTLINE 163\n",
       "-66.000 -66.000 66.000 66.000"},
      {"CAM",
       {{"l_1", "10", "mm"},
        {"a_1", "0", "deg"},
        {"l_2", "10", "mm"},
        {"a_2", "90", "deg"},
        {"l_3", "20", "mm"},
        {"a_3", "180", "deg"},
        {"l_4", "10", "mm"},
        {"a_4", "270", "deg"},
        {"bv", "9", "mm"},
        {"dh", "4", "mm"}},
       "CIRCLE CENTRE 1\nCIRCLE OUTLINE 1\nLINE CENTRE 2\nLINE OUTLINE 4\n",
       "-21.500 -11.500 11.500 11.500"},
      // A bolt M10, its nut and its washer.
      {"THRJOIN",
       {{"d", "10", "mm"},
        {"As", "57.99", "mm2"},
        {"d_1", "15.751127", "mm"},
        {"l_1", "6.5", "mm"},
        {"d_2", "10", "mm"},
        {"l_2", "50", "mm"}},
       "LINE CENTRE 1\nLINE OUTLINE 12\n",
       "-2.825 -8.660 59.325 8.660"},
      {"THRJOIN",
       {{"d", "10", "mm"}, {"d_1", "15.751127", "mm"}, {"dh", "10", "mm"}},
       "CIRCLE OUTLINE 1\nLINE CENTRE 2\nLINE OUTLINE 6\n",
       "-9.526 -9.526 9.526 9.526"},
      {"THRJOIN",
       {{"d", "10", "mm"}, {"d_1", "20", "mm"}, {"dh", "10.8", "mm"}},
       "CIRCLE OUTLINE 2\nLINE CENTRE 2\n",
       "-11.000 -11.000 11.000 11.000"},
      {"KEYWAY",
       {{"bk", "8", "mm"}, {"lk", "40", "mm"}, {"form", "1", "ND"}},
       "LINE CENTRE 1\nLINE OUTLINE 34\n",
       "-2.000 -4.000 42.000 4.000"},
      {"KEYWAY",
       {{"bk", "8", "mm"}, {"lk", "40", "mm"}, {"form", "2", "ND"}},
       "LINE CENTRE 1\nLINE OUTLINE 4\n",
       "-2.000 -4.000 42.000 4.000"},
      // A3 beside a part that is drawn half its size.
      {"xformats",
       {{"xxSheet", "3", "ND"}, {"xxScale", "0.5", "ND"}},
       "LINE OUTLINE 12\n",
       "0.000 0.000 840.000 594.000"},
      // The angle of a symbol reaches 10.5 up and as far to the right as 60 degrees say.
      {"SURFACE", {{"Ra", "3.2", "um"}}, "LINE OUTLINE 2\n", "-2.887 0.000 6.062 10.500"},
      {"SURFACE", {{"process", "1", "ND"}}, "LINE OUTLINE 3\n", "-2.887 0.000 6.062 10.500"},
      {"SURFACE",
       {{"process", "2", "ND"}},
       "CIRCLE OUTLINE 1\nLINE OUTLINE 2\n",
       "-2.887 0.000 6.062 10.500"},
  };
  const TestMachine machine;
  const std::string path = "C:\\Vantorel\\drawing.dxf";
  for (const Drawn& row : rows) {
    ASSERT_TRUE(WriteDrawing(path, row.dataFile, row.parameters)) << row.dataFile;
    EXPECT_EQ(OutputOf(QUILLMAR_READ_DXF " " + machine.HostPath(path).string()),
              std::string("AC1009\nCENTRE 1 CENTER\nOUTLINE 7 CONTINUOUS\n") + row.entities +
                  row.extents + "\n" + row.extents + "\n0 0\n")
        << row.dataFile;
  }
}

// The layers as the file says, where it makes sense; centre lines as far as the CAD wants them.
TEST(DrawingFile, HonoursWhatTheCadAsksFor) {
  const TestMachine machine;
  const std::string path = "C:\\Vantorel\\drawing.dxf", layers = "C:\\Vantorel\\Layers.ini";
  std::ofstream(machine.HostPath(layers)) << "[Layers]\nOUTLINE=3,HIDDEN\nCENTRE=300,DOTS\n";
  const std::vector<DataParameter> key = {
      {"bk", "8", "mm"}, {"lk", "40", "mm"}, {"form", "2", "ND"}};
  ASSERT_TRUE(WriteDrawing(path, "KEYWAY", key, {.axisOverlap = 7, .layersFile = layers}));
  EXPECT_EQ(OutputOf(QUILLMAR_READ_DXF " " + machine.HostPath(path).string()),
            "AC1009\nCENTRE 1 CENTER\nOUTLINE 3 HIDDEN\nLINE CENTRE 1\nLINE OUTLINE 4\n"
            "-7.000 -4.000 47.000 4.000\n-7.000 -4.000 47.000 4.000\n0 0\n");
}

// No facet stands alone, and the volume is that of the body with 72 sides; the reader takes numbers
// of seven digits.
TEST(DrawingFile, ModelsAreReadByOthers) {
  const TestMachine machine;
  const std::string path = "C:\\Vantorel\\model.c3d";
  const auto meshed = [&](const std::vector<DataParameter>& parameters, const char* dataFile) {
    EXPECT_TRUE(WriteDrawing(path, dataFile, parameters, {}));
    return OutputOf("admesh " + machine.HostPath(path).string() +
                    " | grep -E 'Total disconnected|Number of parts|Backwards' | xargs");
  };
  const std::string sleeve =
      meshed({{"da", "40", "mm"}, {"dh", "30", "mm"}, {"b", "20", "mm"}}, "SLEEVE");
  const std::string one = "Total disconnected facets : 0 0 Number of parts : 1 Volume : ";
  // 72 / 2 sin(5 deg) (20^2 - 15^2) 20 = 10981.6
  EXPECT_THAT(sleeve, testing::StartsWith(one + "1098"));
  const std::string shaft = meshed({{"#spiCount", "2", "ND"},
                                    {"l_1", "50", "mm"},
                                    {"d_1", "30", "mm"},
                                    {"l_2", "100", "mm"},
                                    {"d_2", "40", "mm"}},
                                   "SHAFT");
  EXPECT_THAT(shaft, testing::StartsWith(one + "1608"));
}

TEST(DrawingFile, PicturesAreReadByOthers) {
  const TestMachine machine;
  const std::string path = "C:\\Vantorel\\picture.wmf";
  ASSERT_TRUE(WriteDrawing(path, "SPURGEAR", {{"da", "100", "mm"}, {"d", "90", "mm"}},
                           {.axisOverlap = 5, .layersFile = {}}));
  // The reader makes it 512 wide, which are the 110 of the centre lines.
  const std::string svg = OutputOf("wmf2svg " + machine.HostPath(path).string() +
                                   " | grep -oE '<ellipse|<line|r[xy]=\"[0-9]+'"
                                   " | tr -d '\"' | xargs");
  EXPECT_EQ(svg, "<ellipse rx=232 ry=232 <ellipse rx=209 ry=209 <line <line\n");
}

}  // namespace
}  // namespace hexaplan
