// The host's answers, its journal, and what it notices.
#include <gmock/gmock.h>

#include "host/HostBrain.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::strict {
namespace {

using Outcome = HostBrain::Outcome;

class Host : public testing::Test {
 protected:
  void Answer(const std::string& key, const std::string& answer) {
    brain.Call(kHostSetAnswer, {key, answer});
  }
  std::string Violations() { return std::get<std::string>(brain.Call(kHostViolations, {}).value); }
  std::string Call(int index) {
    return std::get<std::string>(brain.Call(kHostCall, {index}).value);
  }

  std::uint32_t postedTo = 0;
  HostBrain brain{[this](std::uint32_t window) {
    postedTo = window;
    return true;
  }};
};

TEST_F(Host, AnswersRaisesAndDiesAsToldAndKeepsAJournal) {
  EXPECT_EQ(std::get<int>(brain.Call(QM_HOST_IS_READY, {}).value), 1);
  Answer("16", "0");
  EXPECT_EQ(std::get<int>(brain.Call(QM_HOST_IS_READY, {}).value), 0);
  Answer("52", "1");
  EXPECT_TRUE(std::get<bool>(brain.Call(QM_HOST_UPDATE_EXT_DATA, {std::string("P1"), 7}).value));
  Answer("raise 2", "No licence");
  const HostBrain::Reply raised = brain.Call(QM_HOST_SHOW_CALCULATION, {std::string("P\"1")});
  EXPECT_EQ(raised.outcome, Outcome::Raised);
  EXPECT_EQ(raised.description, "No licence");
  Answer("die 19", "");
  EXPECT_EQ(brain.Call(QM_HOST_COMMAND, {-1}).outcome, Outcome::Dies);
  EXPECT_EQ(std::get<int>(brain.Call(kHostCallCount, {}).value), 5);
  EXPECT_EQ(Call(2), "52(\"P1\",7)");
  EXPECT_EQ(Call(4), "19(-1)");
  EXPECT_EQ(Call(5), "");
  EXPECT_EQ(Violations(), "");
}

TEST_F(Host, NoticesWhatItIsNotMadeFor) {
  EXPECT_EQ(brain.Call(QM_HOST_COMMAND, {std::string("1")}).outcome, Outcome::Failed);
  EXPECT_EQ(brain.Call(QM_HOST_COMMAND, {}).outcome, Outcome::Failed);
  EXPECT_EQ(brain.Call(0x99, {}).outcome, Outcome::UnknownMember);
  EXPECT_EQ(brain.FindMember("SetSmartMode"), QM_HOST_SET_SMART_MODE);
  EXPECT_EQ(brain.FindMember("Show"), std::nullopt);
  Answer("refuse SetSmartMode", "");
  EXPECT_EQ(brain.FindMember("SetSmartMode"), std::nullopt);
  EXPECT_EQ(brain.Call(QM_HOST_SET_SMART_MODE, {1}).outcome, Outcome::UnknownMember);
  EXPECT_EQ(Violations(),
            "19(\"1\"): wants arguments (i)\n19(): wants arguments (i)\n"
            "153(): no such method\n49(1): not offered\n");
}

TEST_F(Host, PostsToTheWindowItWasTold) {
  EXPECT_EQ(std::get<int>(brain.Call(kHostFinish, {150, std::string("P1")}).value), 0);
  const std::string window = "65540";
  brain.Call(QM_HOST_SESSION, {2, window, std::string("258"), std::string("D")});
  EXPECT_EQ(std::get<int>(brain.Call(kHostFinish, {160, std::string("P1,P2")}).value), 1);
  EXPECT_EQ(postedTo, 65540u);
  EXPECT_EQ(std::get<int>(brain.Call(QM_HOST_CALLBACK_CODE, {}).value), 160);
  EXPECT_EQ(std::get<std::string>(brain.Call(QM_HOST_CALLBACK_LIST, {}).value), "P1,P2");
}

}  // namespace
}  // namespace quillmar::strict
