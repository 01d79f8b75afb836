// Reports are seen through a debugger of the test's own.
#include "base/ErrorLog.h"

#include <gtest/gtest.h>

#include "platform/Profile.h"
#include "support/DebuggerOutput.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

const SourceStamp kSource{"src/parts/VXPart.cpp", 12, "Apr 24 2008", "16:00:20",
                          "Fri Aug  6 02:20:26 2004"};

std::string ReportOf(const std::string& message) {
  return message +
         "\n  File: src/parts/VXPart.cpp, Line: 12\n  (Compiled: Apr 24 2008,16:00:20, "
         "Source Modified: Fri Aug  6 02:20:26 2004)";
}

class ErrorLogTest : public ::testing::Test {
 protected:
  ~ErrorLogTest() override { SetTrace(nullptr); }
  static void SetTrace(const char* value) {
    platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", value);
  }

  TestMachine machine;
  DebuggerOutput debugger;
  ErrorLog log;
};

TEST_F(ErrorLogTest, TracingIsReadAtEveryReport) {
  SetTrace("2");
  log.ReportError("first", kSource);
  EXPECT_TRUE(debugger.Take().empty());
  SetTrace("1");
  log.ReportError("100%s of %d", kSource);
  EXPECT_EQ(debugger.Take(), std::vector<std::string>{ReportOf("100%s of %d")});
  SetTrace(nullptr);
  log.ReportFailure("step");
  EXPECT_TRUE(debugger.Take().empty());
}

TEST_F(ErrorLogTest, AFailedStepShowsTheTenNewestReports) {
  SetTrace("1");
  log.ReportFailure("Cannot insert part");
  EXPECT_EQ(debugger.Take(), std::vector<std::string>{"Cannot insert part ()\n"});
  for (int i = 1; i <= 25; ++i) log.ReportError("report " + std::to_string(i), kSource);
  debugger.Take();
  log.ReportFailure("Cannot insert part");
  std::string expected = "Cannot insert part (" + ReportOf("report 25") + ")\n";
  for (int i = 25; i > 15; --i) expected += ReportOf("report " + std::to_string(i)) + "\n";
  EXPECT_EQ(debugger.Take(), std::vector<std::string>{expected});
}

TEST_F(ErrorLogTest, OldReportsMakeRoomForNewOnes) {
  ErrorLog small(2);
  for (const char* message : {"first", "second", "third"}) small.ReportError(message, kSource);
  SetTrace("1");
  small.ReportFailure("step");
  EXPECT_EQ(debugger.Take(),
            std::vector<std::string>{"step (" + ReportOf("third") + ")\n" + ReportOf("third") +
                                     "\n" + ReportOf("second") + "\n"});
}

}  // namespace
}  // namespace quillmar
