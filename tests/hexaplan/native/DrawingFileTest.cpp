// The host's drawings as a reader of DXF files sees them that is not ours.
#include "hexaplan/host/DrawingFile.h"

#include <gtest/gtest.h>

#include <cstdio>
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
       "LINE CENTRE 1\nLINE OUTLINE 10\n",
       "-7.500 -20.000 157.500 20.000"},
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

}  // namespace
}  // namespace hexaplan
