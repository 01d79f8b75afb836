// quillmar-convert: the dry run, both directions, interruptions.
#include <fstream>
#include <iterator>

#include "ToolRun.h"

namespace quillmar::test {
namespace {

using testing::HasSubstr;

class ConvertToolTest : public StoreTool {
 protected:
  ConvertToolTest() {
    machine.WriteFile(Mapping(),
                      "[Cad_GEAR2_1->2]\r\nMODELA=MODELA_FM,MODELA_FP\r\n"
                      "[Cad_Default_1->2]\r\nSPRING=COIL\r\n");
  }
  std::string Mapping() const { return machine.InFolder("ProtConv.ini"); }
  std::string Arguments(const std::string& more) const {
    return Place() + "--settings Cad --mapping '" + Mapping() + "' --journal " + Journals() + " " +
           more;
  }
  Ran Convert(const std::string& more) { return RunTool("quillmar-convert", Arguments(more)); }
  std::string Journals() const { return Folder() + "/runs"; }
};

TEST_F(ConvertToolTest, ShowsWhatItWillDoAndDoesIt) {
  const std::string spring = Make("KEELDATA|SPRING", 1, "SPRING", {{"d", "2", "mm"}});
  const std::string gear = Make("GEAR2", 1, "MODELA", {{"cas", "0.25", "mm"}});
  const std::string second = Make("GEAR2", 1, "MODELA", {{"cas", "0.5", "mm"}});
  Make("", 1, "", {});
  const Ran foreseen = Convert("--up --verbose");
  EXPECT_EQ(foreseen.status, 1) << foreseen.output;
  EXPECT_THAT(foreseen.output, HasSubstr("1.0 -> 2.0: 3, left alone: 1"));
  EXPECT_THAT(foreseen.output, HasSubstr("split: 1 new protocol"));
  EXPECT_THAT(foreseen.output, HasSubstr("    ~ [Data] cas: 0.25 mm -> \n"));
  EXPECT_EQ(Contents(gear, {"cas", "cs"}), "1.0 MODELA cas=0.25mm cs=");
  EXPECT_EQ(Count(), 4u) << "the dry run leaves nothing behind";

  const Ran done = Convert("--up --apply --report " + Folder() + "/report.txt");
  EXPECT_EQ(done.status, 1) << done.output;
  EXPECT_EQ(Contents(spring, {"d"}), "2.0 COIL d=2mm");
  EXPECT_EQ(Contents(gear, {"cas", "cs"}), "2.0 MODELA_FM cas= cs=0.25mm");
  // The second of a kind is mapped by the same section, whatever came between.
  EXPECT_EQ(Contents(second, {"cs"}), "2.0 MODELA_FM cs=0.5mm");
  EXPECT_EQ(Count(), 6u);
  std::ifstream report(Folder() + "/report.txt");
  EXPECT_THAT(std::string(std::istreambuf_iterator<char>(report), {}), HasSubstr(gear));

  const Ran back = Store("import --replace " + Journals() + "/1/" + gear + ".ref");
  EXPECT_EQ(back.status, 0) << back.output;
  EXPECT_EQ(Contents(gear, {"cas"}), "1.0 MODELA cas=0.25mm");
  EXPECT_EQ(Convert("--down --apply").status, 1);
  EXPECT_EQ(Contents(second, {"cas", "cs"}), "1.0 MODELA_FM cas=0.5mm cs=");
}

TEST_F(ConvertToolTest, RefusesWhatItDoesNotUnderstand) {
  EXPECT_EQ(Convert("").status, 2);
  EXPECT_EQ(Convert("--up --down").status, 2);
  EXPECT_EQ(RunTool("quillmar-convert", Place() + "--up").status, 2) << "no settings name";
}

// As a process that died after it stored both views, before it said that it was done.
TEST_F(ConvertToolTest, GoesOnBehindAnInterruption) {
  const std::string gear = Make("GEAR2", 1, "MODELA", {{"cas", "0.25", "mm"}});
  ASSERT_EQ(Convert("--up --apply").status, 0);
  ASSERT_EQ(Count(), 2u);
  const std::string file = Journals() + "/1/journal.txt";
  std::ifstream journal(file);
  std::string text{std::istreambuf_iterator<char>(journal), {}};
  text.resize(text.find("done"));
  std::ofstream(file) << text << "do";

  EXPECT_EQ(Convert("--down --apply").status, 2) << "another conversion must wait";
  const Ran again = Convert("--up --apply");
  EXPECT_EQ(again.status, 0) << again.output;
  EXPECT_THAT(again.output, HasSubstr("taken up"));
  EXPECT_EQ(Contents(gear, {"cas", "cs"}), "2.0 MODELA_FM cas= cs=0.25mm");
  EXPECT_EQ(Count(), 2u) << "the copy of the interrupted conversion is gone";
}

TEST_F(ConvertToolTest, SurvivesBeingKilledAgainAndAgain) {
  std::vector<std::string> gears;
  for (int i = 0; i < 60; ++i) {
    gears.push_back(Make("GEAR2", 1, "MODELA", {{"cas", "0.25", "mm"}}));
  }
  const std::string tool = TOOLS_FOLDER "/quillmar-convert " + Arguments("--up --apply");
  int kills = 0;
  // From a time in which no machine gets far to one in which a slow one does.
  for (double seconds = 0.005; seconds < 0.2; seconds *= 1.35) {
    const std::string line =
        "timeout -s KILL " + std::to_string(seconds) + " " + tool + " >/dev/null 2>&1";
    kills += std::system(line.c_str()) != 0 ? 1 : 0;
  }
  EXPECT_GT(kills, 0);
  const Ran last = Convert("--up --apply");
  EXPECT_EQ(last.status, 0) << last.output;
  for (const std::string& gear : gears) {
    ASSERT_EQ(Contents(gear, {"cas", "cs"}), "2.0 MODELA_FM cas= cs=0.25mm");
  }
  EXPECT_EQ(Count(), 120u);
}

}  // namespace
}  // namespace quillmar::test
