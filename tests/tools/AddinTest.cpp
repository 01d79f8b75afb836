// quillmar-addin on the sample add-in and on a faulty one.
#include "ToolRun.h"

namespace quillmar::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

TEST(AddinToolTest, TheSampleIsInOrder) {
  const Ran ran = RunTool("quillmar-addin", SAMPLE_ADDIN " --verbose");
  EXPECT_EQ(ran.status, 0) << ran.output;
  for (const char* told :
       {"Functions of LoginCad: 19 of 58", "Drawing functions of Set2dFileType: 0 of 9",
        "InsertFeature              features cannot be inserted",
        "Insert2dPart               required: Set2dFileType fails",
        "GetProtocol gives the reference text back",
        "GetAllParts, a buffer one character too small", "RenamePart with null pointers",
        "  not tried GetPart, a roomy buffer: it has nothing to say of the specimen",
        "  not tried GetPart, a buffer of 1023 characters\n",
        "120 in order, 12 not tried, 0 warnings, 0 failures"}) {
    EXPECT_THAT(ran.output, HasSubstr(told));
  }
}

TEST(AddinToolTest, EveryFaultIsAFindingAndNoneEndsTheCheck) {
  const Ran ran = RunTool("quillmar-addin", FAULTY_ADDIN " --limit 2");
  EXPECT_EQ(ran.status, 1) << ran.output;
  for (const char* told :
       {"GetMainHwnd                required: LoginCad fails",
        "FAILURE  ConnectProtocol replaces the reference text: gave \"QMADDINCHECK1<@PID>first",
        "FAILURE  GetProtocol, a buffer one character too small: wrote beyond",
        "FAILURE  GetPart, a roomy buffer: left a text without its NUL",
        "FAILURE  GetPart, a buffer of 0 characters: wrote beyond a buffer of 0 characters",
        "FAILURE  GetPart, a buffer of 16 characters: wrote beyond",
        "FAILURE  GetPart, a buffer of 1023 characters: wrote beyond",
        "FAILURE  GetPart with empty texts: left a text without its NUL",
        "FAILURE  GetAssembly, a buffer of 16 characters: wrote beyond a buffer of fixed size",
        "FAILURE  GetAssembly with empty texts: wrote beyond the end of a buffer",
        "not tried GetDataWD, a roomy buffer: it has nothing to say",
        "FAILURE  GetDataWD, a buffer of 16 characters: wrote beyond",
        "FAILURE  GetParameterList, a buffer of 0 characters: asked for 9 characters where 10",
        "FAILURE  GetAllParts, a roomy buffer: did not return within 2 s",
        "FAILURE  RenamePart with empty texts: let an exception out: no part"}) {
    EXPECT_THAT(ran.output, HasSubstr(told));
  }
  // A sanitizer turns the crash into an end of the process.
  EXPECT_THAT(ran.output, ContainsRegex("warning  InsertParamPart with null pointers: "
                                        "(crashed|ended the process)"));
  EXPECT_THAT(ran.output, Not(HasSubstr("ConnectProtocol with")));
}

TEST(AddinToolTest, TriesAnAddinInASession) {
  const Ran ran = RunTool("quillmar-addin", "--try --image " IMAGE " " SAMPLE_ADDIN);
  EXPECT_EQ(ran.status, 0) << ran.output;
  EXPECT_THAT(ran.output, ContainsRegex("stand in the add-in: [1-9].*\n.*parameters \\*view\\*,"));
  const Ran faulty = RunTool("quillmar-addin", "--try --image " IMAGE " " FAULTY_ADDIN);
  EXPECT_EQ(faulty.status, 1) << faulty.output;
  EXPECT_THAT(faulty.output, HasSubstr("FAILURE  LoginCad finds the add-in: gave 0"));
  EXPECT_THAT(faulty.output, HasSubstr("not tried StartCalculation starts a spur gear"));
  EXPECT_EQ(RunTool("quillmar-addin", "--try --image /nowhere " SAMPLE_ADDIN).status, 2);
}

TEST(AddinToolTest, SaysWhyThereIsNothingToCheck) {
  EXPECT_THAT(RunTool("quillmar-addin", "/nowhere.so").output, HasSubstr("cannot be loaded"));
  EXPECT_EQ(RunTool("quillmar-addin", "/nowhere.so").status, 2);
  EXPECT_EQ(RunTool("quillmar-addin", "").status, 2);
}

}  // namespace
}  // namespace quillmar::test
