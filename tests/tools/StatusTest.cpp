// What all tools promise to scripts: exit statuses, and colours for people alone.
#include <fstream>

#include "ToolRun.h"
#include "recorder/TraceControl.h"

namespace quillmar::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class StatusTest : public StoreTool {
 protected:
  // What keeps its own folder of the trace.
  std::string Trace() {
    recorder::TraceControl control(Folder() + "/Trace");
    std::ofstream(Folder() + "/Trace/calls.log")
        << "1\t1000\t77\tQuillmar\tDrawboard\tInsertPart\t(\"a\")\t0\t2500\n";
    return "quillmar-trace --folder " + Folder() + "/Trace ";
  }
  std::string Convert(const std::string& more) {
    return "quillmar-convert " + Place() + "--settings Cad --journal " + Folder() + "/runs " + more;
  }
};

TEST_F(StatusTest, OfWhatCannotBeDoneAndOfTheHelp) {
  const std::string gear = Make("GEAR2", 1, "MODELA", {{"cas", "0.25", "mm"}});
  const std::string store = "quillmar-store " + Place();
  const char* const full = "Standard output cannot be written";
  const std::string trace = Trace();
  const struct {
    std::string line;
    int status;
    std::string told;
  } rows[] = {
      {store + "list >/dev/full", 2, full},
      {store + "export " + gear + " >/dev/full", 2, full},
      {trace + "show >/dev/full", 2, full},
      {trace + "follow --from-start >/dev/full", 2, full},
      {"quillmar-addin --list " SAMPLE_ADDIN " >/dev/full", 2, full},
      {Convert("--up --apply >/dev/full"), 2, full},
      {Convert("--up --apply --report /proc/none/report"), 2, "Cannot write /proc/none/report"},
      {"quillmar-convert --help", 0, "2 it could not be done, 3 interrupted"},
      {"quillmar-store --help", 0, "2 it could not be done.\n"},
      {"quillmar-store export --help", 0, "made when missing"},
      {"../../../run --job", 2, "--job needs a value"},
      {"../../../run --job /nowhere", 2, "no job file"},
  };
  for (const auto& row : rows) {
    const Ran ran = RunLine("(" TOOLS_FOLDER "/" + row.line + ")");
    EXPECT_EQ(ran.status, row.status) << row.line << "\n" << ran.output;
    EXPECT_THAT(ran.output, HasSubstr(row.told)) << row.line;
  }
  EXPECT_EQ(Contents(gear, {}), "1.0 MODELA") << "converted, though nobody could be told";
}

TEST_F(StatusTest, ColoursAreForATerminalWhoseUserWantsThem) {
  const std::string line = "script -qec '" TOOLS_FOLDER "/" + Trace() + "show' /dev/null";
  EXPECT_THAT(RunLine("NO_COLOR= " + line).output, HasSubstr("\x1b["));
  EXPECT_THAT(RunLine("NO_COLOR=1 " + line).output,
              testing::AllOf(HasSubstr("InsertPart"), Not(HasSubstr("\x1b["))));
}

// Interrupted when it has foreseen everything and told the first line of that.
TEST_F(StatusTest, OfAnInterruptedConversion) {
  for (int i = 0; i < 60; ++i) Make("GEAR2", 1, "MODELA", {{"cas", "0.25", "mm"}});
  const std::string pid = Folder() + "/pid";
  const std::string tool = TOOLS_FOLDER "/" + Convert("--up --apply");
  std::ofstream(Folder() + "/interrupted") << "echo $$ >" << pid << "; exec " << tool;
  const Ran ran = RunLine("{ sh " + Folder() + "/interrupted 2>&1; echo status $?; } | " +
                          "{ read first; kill -INT $(cat " + pid + "); cat; }");
  EXPECT_THAT(ran.output, HasSubstr("the same command goes on.\nstatus 3\n"));
  const Ran again = RunLine(tool);
  EXPECT_EQ(again.status, 0) << again.output;
}

}  // namespace
}  // namespace quillmar::test
