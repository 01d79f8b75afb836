// DoWDOperation: data of the CAD on their way to the data wizard.
#include <chrono>
#include <fstream>
#include <thread>

#include "Calculation.h"

namespace quillmar::contract {
namespace {

using namespace std::chrono_literals;

class Wizard : public Calculation {
 protected:
  Wizard() { host.Answer("32", kCadFolder + "\\"); }

  // The protocol that the wizard was started on; empty when it was not started.
  static std::string StartedOn() {
    const std::filesystem::path trace = OwnPath(kCadFolder + "\\wizard.txt");
    const auto end = std::chrono::steady_clock::now() + 10s;
    std::string option;
    std::string id;
    while (id.empty() && std::chrono::steady_clock::now() < end) {
      std::ifstream file(trace);
      if (!(file >> option >> id)) id.clear();
      if (id.empty()) std::this_thread::sleep_for(20ms);
    }
    EXPECT_EQ(option, "/C");
    std::filesystem::remove(trace);
    return id;
  }
};

TEST_F(Wizard, IsStartedOnTheDataOfTheCad) {
  const std::string data = "d,20," + std::string(150000, 'x');
  strict::Core().Strict_SetAnswer("GetDataWD.text", data.c_str());
  strict::Core().Strict_SetAnswer("GetDataWD.second", "Shaft:1");
  module.DoWDOperation(1, -2, 3);
  const std::vector<JournalCall> asked = Calls("GetDataWD");
  ASSERT_THAT(asked, SizeIs(2));
  EXPECT_EQ(asked[0].arguments[1], "100000");
  EXPECT_EQ(asked[1].arguments[1], std::to_string(data.size()));
  EXPECT_THAT(host.Commands(), ElementsAre("32()"));
  const std::string id = StartedOn();
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("DataWizard", "First"), "1");
  EXPECT_EQ(record.KeyWord("DataWizard", "Second"), "-2");
  EXPECT_EQ(record.KeyWord("DataWizard", "Third"), "3");
  EXPECT_EQ(record.KeyWord("DataWizard", "Data"), data);
  EXPECT_EQ(record.KeyWord("DataWizard", "Source"), "Shaft:1");
  EXPECT_THAT(Calls("StopWD"), IsEmpty());
}

TEST_F(Wizard, IsStartedWithoutDataWhenTheCadHasNone) {
  strict::Core().Strict_SetAnswer("GetDataWD", "0");
  module.DoWDOperation(0, 0, 0);
  EXPECT_THAT(Calls("GetDataWD"), SizeIs(1));
  EXPECT_THAT(Calls("StopWD"), IsEmpty());
  const Record record(StartedOn());
  EXPECT_EQ(record.KeyWord("DataWizard", "First"), "0");
  EXPECT_EQ(record.KeyWord("DataWizard", "Data"), kMissing);
}

TEST_F(Wizard, IsNotStartedWhenTheAnnouncedDataDoNotCome) {
  strict::Core().Strict_SetAnswer("GetDataWD.text", "d,20,");
  strict::Core().Strict_SetAnswer("GetDataWD.again", "0");
  module.DoWDOperation(1, 2, 3);
  EXPECT_THAT(CalledFunctions(), ElementsAre("GetDataWD", "GetDataWD", "StopWD"));
  EXPECT_THAT(host.Commands(), IsEmpty());
}

TEST_F(Wizard, LeavesNothingBehindWhenItCannotBeStarted) {
  host.Answer("32", "C:\\Nowhere");
  module.DoWDOperation(1, 2, 3);
  EXPECT_THAT(CalledFunctions(), testing::Not(testing::Contains("StopWD")));
  if (!kStrictCompanions) return;
  const std::vector<JournalCall> erased = Calls("Com_EraseProtocol");
  ASSERT_THAT(erased, SizeIs(1));
  EXPECT_EQ(StateOf(erased[0].arguments[0]), 0);
  EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
}

}  // namespace
}  // namespace quillmar::contract
