#include "session/CadStandards.h"

#include <gmock/gmock.h>

#include "support/TestMachine.h"

namespace quillmar {
namespace {

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST(CadStandards, ComeFromTheAddInsIniFile) {
  TestMachine machine;
  const std::string file = machine.InFolder("Addin.ini");
  const std::string lengthy(1100, 'n');
  machine.WriteFile(file,
                    "[General]\r\nStandards=ISO,,Norm 2,DIN\r\n"
                    "[StdHXMapping]\r\nISO=ISO metric\r\nDIN=" +
                        lengthy + "\r\n");
  CadStandards standards;
  EXPECT_TRUE(standards.Load(file));
  EXPECT_EQ(standards.IniFile(), file);
  EXPECT_THAT(standards.Map(),
              UnorderedElementsAre(Pair("ISO", "ISO metric"), Pair("Norm 2", "Norm 2"),
                                   Pair("DIN", lengthy.substr(0, 1023))));

  // A new file takes the place of the old one, also when it lists nothing.
  const std::string other = machine.InFolder("Other.ini");
  EXPECT_FALSE(standards.Load(other));
  EXPECT_EQ(standards.IniFile(), other);
  EXPECT_THAT(standards.Map(), IsEmpty());
  machine.WriteFile(other, "[General]\r\nStandards=,\r\n");
  EXPECT_TRUE(standards.Load(other));
  EXPECT_THAT(standards.Map(), IsEmpty());
  standards.Load(file);
  standards.Clear();
  EXPECT_THAT(standards.Map(), IsEmpty());
}

}  // namespace
}  // namespace quillmar
