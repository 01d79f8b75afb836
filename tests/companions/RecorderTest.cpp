// The recorder, on the borders of the storage and link libraries and by itself.
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "companions/ChildProcess.h"
#include "companions/StoreFixture.h"
#include "platform/ForeignCall.h"
#include "recorder/TraceControl.h"
#include "recorder/TraceReader.h"

namespace quillmar::test {
namespace {

using recorder::FaultMode;
using recorder::Kind;
using recorder::TraceControl;
using recorder::TracedCall;
using recorder::TraceReader;

std::vector<std::string> Summaries(const std::vector<TracedCall>& calls) {
  std::vector<std::string> summaries;
  summaries.reserve(calls.size());
  for (const TracedCall& call : calls) summaries.push_back(call.to + " " + call.Summary());
  return summaries;
}

class RecorderTest : public StoreFixture {
 protected:
  RecorderTest() {
    suite.Reload();  // a companion looks for the trace when it is loaded
    control.Record(true);
  }
  ~RecorderTest() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  std::filesystem::path folder = machine.HostPath("C:\\Vantorel\\Trace");
  TraceControl control{folder};
  TraceReader reader{folder};
};

TEST_F(RecorderTest, CallsStandInOneOrderWithArgumentsAndResults) {
  int major = 0;
  int minor = 0;
  suite.OpenNew();
  control.Reset();
  suite.Open("P1");
  suite.Put("P1", "S", "k", "line\n\"\xB3\t");
  suite.Get("P1", "S", "k");
  suite.Get("P1", "S", "missing");
  suite.storage.Com_GetVersion("P1", &major, &minor);
  suite.links.Link_SetLinkTo("P1", "a", "P2");
  suite.PutBuffer("P1", {"a", "b"});
  suite.Put("P1", "S", "k", nullptr);
  const auto calls = reader.Read();
  ASSERT_EQ(Summaries(calls),
            (std::vector<std::string>{
                R"(Keelcomm Com_OpenProtocol(&"P1") = 1)",
                R"(Keelcomm Com_PutKeyWord("P1", "S", "k", "line\n\"\xB3\t") = 1)",
                R"(Keelcomm Com_GetKeyWord("P1", "S", "k", &"line\n\"\xB3\t") = 1)",
                R"(Keelcomm Com_GetKeyWord("P1", "S", "missing", &blanks*4096) = 0)",
                R"(Keelcomm Com_GetVersion("P1", &2, &0) = 1)",
                R"(Keellink Link_SetLinkTo("P1", "a", "P2") = 1)",
                R"(Keelcomm Com_PutBuffer("P1", ["a", "b"]*2) = 1)",
                R"(Keelcomm Com_PutKeyWord("P1", "S", "k", null) = 1)"}));
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].number, i + 1);
    EXPECT_EQ(calls[i].from, "companions_test");
  }
  EXPECT_EQ(recorder::TextOfArgument(calls[1].arguments[3]), "line\n\"\xB3\t");
  EXPECT_EQ(recorder::TextOfArgument(calls[3].arguments[3]), std::string(4096, ' '));
}

TEST_F(RecorderTest, ACallThroughThePlatformIsTheCallingModules) {
  const std::uintptr_t words[] = {reinterpret_cast<std::uintptr_t>("P1")};
  platform::CallForeign(reinterpret_cast<void*>(suite.storage.Com_CloseProtocol), words, 1);
  const auto calls = reader.Read();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].from, "companions_test");
}

TEST_F(RecorderTest, LongTextsAreCutUnlessWholeOnesAreWanted) {
  const std::string value(1000, 'v');
  suite.Open("P1");
  for (const std::uint32_t limit : {10u, 0u}) {
    control.Reset();
    control.SetTextLimit(limit);
    suite.Put("P1", "S", "k", value.c_str());
    const auto calls = reader.Read();
    ASSERT_EQ(calls.size(), 1u);
    const auto& argument = calls[0].arguments[3];
    EXPECT_EQ(argument, limit == 10 ? "\"vvvvvvvvvv\"+1000" : "\"" + value + "\"");
    EXPECT_EQ(recorder::TextOfArgument(argument), limit == 10 ? Text() : Text(value));
  }
}

TEST_F(RecorderTest, NothingIsWrittenWhileRecordingIsOff) {
  control.Record(false);
  suite.Open("P1");
  EXPECT_TRUE(reader.Read().empty());
}

TEST_F(RecorderTest, TheReasonOfAFailureIsNoted) {
  suite.Open("P1");
  suite.PutBuffer("P1", {"KC1|X"});
  const auto calls = reader.Read();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[2].Summary(), "note(\"the buffer for protocol P1 is malformed\") = ");
}

TEST_F(RecorderTest, ACountedCallFailsOnceOrFromThenOn) {
  const struct {
    std::uint32_t kinds;
    const char* caller;
    std::uint32_t failAt;
    FaultMode mode;
    const char* results;  // of the calls below, in order
    std::uint32_t counted, failed;
  } cases[] = {
      {recorder::kAllKinds, "", 0, FaultMode::Once, "11111", 5, 0},
      {recorder::kAllKinds, "", 1, FaultMode::Once, "01111", 5, 1},
      {recorder::kAllKinds, "", 3, FaultMode::Once, "11011", 5, 1},
      {recorder::kAllKinds, "", 3, FaultMode::FromThenOn, "11000", 5, 3},
      {Kind::Storage | Kind::Driver, "", 3, FaultMode::FromThenOn, "11100", 4, 2},
      {Kind::Link | Kind::Host, "", 1, FaultMode::Once, "11011", 1, 1},
      {recorder::kAllKinds, "companions_test", 2, FaultMode::Once, "10111", 5, 1},
      {recorder::kAllKinds, "Quillmar", 1, FaultMode::FromThenOn, "11111", 0, 0},
      {0, "", 1, FaultMode::FromThenOn, "11111", 0, 0},
  };
  for (const bool isRecorded : {true, false}) {
    control.Record(isRecorded);
    for (const auto& one : cases) {
      control.Reset();
      control.Count(0);
      suite.Open("P1");
      control.Count(one.kinds, one.caller);
      control.SetFault(one.failAt, one.mode);
      std::string results;
      const auto add = [&results](bool result) { results += result ? '1' : '0'; };
      add(suite.Put("P1", "S", "k", "v"));
      add(suite.Get("P1", "S", "k").has_value() || one.failAt == 1);
      add(suite.links.Link_SetLinkTo("P1", "a", "P2") != 0);
      add(suite.Put("P1", "S", "k", "v"));
      add(suite.Put("P1", "S", "k", "v"));
      EXPECT_EQ(results, one.results) << one.kinds << one.caller << one.failAt;
      EXPECT_EQ(control.CountedCalls(), one.counted);
      EXPECT_EQ(control.FailedCalls(), one.failed);
    }
  }
}

TEST_F(RecorderTest, AFailedCallDoesNothing) {
  suite.Open("P1");
  suite.Put("P1", "S", "k", "before");
  control.Count(recorder::kAllKinds);
  control.SetFault(1);
  EXPECT_FALSE(suite.Put("P1", "S", "k", "after"));
  EXPECT_EQ(suite.Get("P1", "S", "k"), "before");
  const auto calls = reader.Read();
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_EQ(calls[2].result, "made to fail: 0");
}

TEST_F(RecorderTest, SeveralProcessesShareOneOrder) {
  const std::string client = machine.Install("SuiteClient.exe", machine.Folder());
  ChildProcess other(machine.HostPath(client), {suite.Folder()});
  suite.Open("P1");
  for (int i = 0; i < 50; ++i) {
    ASSERT_EQ(other.Ask("state\tP1"), "0");
    ASSERT_EQ(State("P1"), QM_PROTOCOL_OPEN);
  }
  const auto calls = reader.Read();
  ASSERT_EQ(calls.size(), 101u);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].number, i + 1);
    EXPECT_EQ(calls[i].from, i % 2 == 1 ? "SuiteClient" : "companions_test") << i;
  }
  EXPECT_NE(calls[1].process, calls[2].process);
}

TEST(TraceReaderTest, PassesOverWhatIsNoWholeLine) {
  const std::string whole = "7\t12\t99\tA\tB\tF\t(1, \"a\\\", b\", [\"c\", \"d\"]*2)\t1\t3";
  const auto call = recorder::ParseTraceLine(std::string(5, '\0') + whole);
  ASSERT_TRUE(call.has_value());
  EXPECT_EQ(call->number, 7u);
  EXPECT_EQ(call->arguments, (std::vector<std::string>{"1", "\"a\\\", b\"", "[\"c\", \"d\"]*2"}));
  for (const std::string& broken :
       {std::string(), std::string(3, '\0'), whole.substr(0, 20), "x" + whole, whole + "\t1",
        std::string("7\t12\t99\tA\tB\tF\t1\t1\t3")}) {
    EXPECT_FALSE(recorder::ParseTraceLine(broken).has_value()) << broken;
  }
}

TEST(BorderTest, NothingThrownLeavesABorder) {
  constexpr recorder::Border border{"Test", Kind::Host};
  const auto caller = recorder::Caller::Named("test");
  const int result = border.Call(
      "F", caller, []() -> int { throw std::runtime_error("lost"); }, -1, std::tie());
  EXPECT_EQ(result, -1);
}

}  // namespace
}  // namespace quillmar::test
