// quillmar-trace on a log as a killed process leaves it.
#include <filesystem>
#include <fstream>

#include "ToolRun.h"
#include "recorder/TraceControl.h"

namespace quillmar::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class TraceToolTest : public testing::Test {
 protected:
  TraceToolTest() {
    recorder::TraceControl control(folder);
    const std::string lines =
        "2\t1500\t77\tQuillmar\tKeelcomm\tCom_GetKeyWord\t(\"P1\", \"Main\", \"DataFile\", "
        "&)\t0\t5\n"
        "1\t1000\t77\tQuillmar\tDrawboard\tInsertPart\t(\"a\")\t1\t2500\n" +
        std::string(40, '\0') +
        "4\t4000\t77\tKeelcomm\tKeelcomm\tnote\t(\"the database is read-only\")\t\t0\n"
        "5\t5000\t77\tQuillmar\tDrawboard\tInsertPart\t(\"b\")\tthrew: no memory\t10\n"
        "6\t6000\t77\tQuillm";
    std::ofstream(std::filesystem::path(folder) / "calls.log", std::ios::binary) << lines;
  }
  Ran Trace(const std::string& arguments) {
    return RunTool("quillmar-trace", "--folder '" + folder + "' " + arguments);
  }

  TestMachine machine;
  std::string folder = machine.HostPath(machine.InFolder("Trace")).string();
};

TEST_F(TraceToolTest, ShowsCallsReportsAndWhatNeverEnded) {
  struct Row {
    const char* arguments;
    const char* told;
    const char* notTold;
  };
  const Row rows[] = {
      {"show", "Quillmar -> Drawboard InsertPart(\"a\") = 1  2.500 ms", "\x1b"},
      {"show", "Keelcomm reports \"the database is read-only\"", "Quillm\n"},
      {"show", "1 call never ended (under way when the program died, or still): 3\n", "4,"},
      {"--failed show", "Com_GetKeyWord", "InsertPart(\"a\")"},
      {"--failed show", "threw: no memory", "InsertPart(\"a\")"},
      {"--no-stores show", "reports", "Com_GetKeyWord"},
      {"--to Drawboard --function InsertPart show --last 1", "(\"b\")", "(\"a\")"},
      {"summary", "Drawboard InsertPart                               2       1", "note"},
      {"follow --from-start --for 3", "InsertPart(\"b\")", "never"},
      {"off", "no longer recorded", "?"},
      {"show", "InsertPart(\"a\")", "?"},
  };
  for (const Row& row : rows) {
    const Ran ran = Trace(row.arguments);
    EXPECT_EQ(ran.status, 0) << row.arguments << ran.output;
    EXPECT_THAT(ran.output, HasSubstr(row.told)) << row.arguments;
    EXPECT_THAT(ran.output, Not(HasSubstr(row.notTold))) << row.arguments;
  }
  EXPECT_EQ(RunTool("quillmar-trace", "--folder /nowhere show").status, 2);
}

TEST_F(TraceToolTest, FollowsFromNowOn) {
  std::ofstream(folder + "/more") << "\n8\t8\t77\tQuillmar\tDrawboard\tRenamePart\t()\t1\t1\n";
  const Ran ran = RunLine("(sleep 0.5; cat " + folder + "/more >>" + folder + "/calls.log) & " +
                          TOOLS_FOLDER "/quillmar-trace --folder " + folder + " follow --for 2");
  EXPECT_THAT(ran.output, testing::AllOf(HasSubstr("RenamePart"), Not(HasSubstr("InsertPart"))));
  // The limit and the user are heard in the middle of a long log as well.
  std::ofstream log(folder + "/calls.log", std::ios::app);
  for (int i = 0; i < 400000; ++i) log << "9\t9\t77\tQuillmar\tDrawboard\tEndless\t()\t1\t1\n";
  log.close();
  EXPECT_LT(std::stoi(Trace("follow --from-start --for 0.1 | wc -l").output), 400000);
}

TEST_F(TraceToolTest, BeginsATraceThatProgramsWriteTo) {
  ASSERT_EQ(Trace("on").status, 0);
  EXPECT_THAT(Trace("show").output, testing::IsEmpty());
  const auto trace = recorder::Trace::Open(folder);
  ASSERT_TRUE(trace.has_value());
}

}  // namespace
}  // namespace quillmar::test
