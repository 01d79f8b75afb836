// Many rounds of insert, update, copy and conversion in one process: nothing may grow but what the
// rounds themselves have put into the store. "--rounds N" says how many.
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "Calculation.h"
#include "OpenHandles.h"
#include "native/ProgramArguments.h"
#include "platform/Messages.h"
#include "platform/Profile.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

constexpr int kWarmUp = 400;  // rounds until the store's cache of pages is full
constexpr int kRounds = 300;
constexpr long kHeapMargin = 64 * 1024;     // bytes; no more than that in all rounds
constexpr long kResidentMargin = 4 * 1024;  // kilobytes
constexpr int kCopyCommand = 5;
constexpr int kUpdateCommand = 4;

int Rounds() {
  const std::vector<std::string>& arguments = ProgramArguments();
  const auto option = std::find(arguments.begin(), arguments.end(), "--rounds");
  return option != arguments.end() && option + 1 != arguments.end() ? std::stoi(option[1])
                                                                    : kRounds;
}

long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
  }
  return 0;
}

// What the process holds. An instrumented one does not tell its heap; what it loses is reported
// when it ends.
struct Holdings {
  long heap = static_cast<long>(mallinfo2().uordblks);
  long resident = ResidentKilobytes();
  int handles = OpenHandles();
};

void Answer(const std::string& key, const std::string& answer) {
  strict::Core().Strict_SetAnswer(key.c_str(), answer.c_str());
}

class Soak : public Calculation {
 protected:
  using Ids = std::set<std::string>;

  void Run(int number) {
    EXPECT_EQ(module.CallUTFunction(number), 1);
    platform::PumpMessages();
  }

  // The object of this protocol is the one that the user has selected.
  static void Select(const std::string& reference) {
    Answer("GetPart.partName", "Selected:1");
    Answer("GetPart.text", reference);
    Answer("GetProtocol(Selected:1).text", reference);
  }

  void Round() {
    // What the stand-ins and the machine keep for tests of what they were told.
    strict::Core().Strict_Reset();
    host.Forget();
    platform::Machine::Current().DebugLines().clear();
    platform::Machine::Current().Shown().clear();
    const Ids before = ListedProtocols();

    const std::string inserted = Calculated(kShaft);
    host.Finish(QM_CALLBACK_NEW_PART, inserted);
    EXPECT_THAT(Calls("InsertShaft"), SizeIs(1));
    { Record(inserted).SetParameter("d", "25", "mm"); }
    host.Finish(QM_CALLBACK_RECALCULATED, inserted);
    EXPECT_THAT(Calls("ChangeShaft"), SizeIs(1));
    const std::string reference = Record(inserted).Reference();

    char newId[QM_PROTOCOL_ID_BUFFER];
    std::vector<char> newReference(2 * reference.size());
    EXPECT_EQ(module.CopyProtocol(reference.c_str(), newId, newReference.data()), 1);
    Ids expected = before;
    expected.insert({inserted, newId});
    EXPECT_EQ(ListedProtocols(), expected);

    Select(reference);
    Run(kCopyCommand);
    Ids made = ListedProtocols();
    EXPECT_EQ(made.size(), expected.size() + 1) << "the command's copy";

    std::string old;
    {
      Record record;
      Fill(record, kShaft);
      record.SetKeyWord("Main", "DataFile", "KeelData|GEAR2")
          .SetParameter("cas", "0.25", "mm")
          .SetVersion(1, 0);
      old = record.Id();
      Select(record.Reference());
    }
    Run(kUpdateCommand);
    EXPECT_EQ(Record(old).Version(), "2.0");
    made.insert(old);
    EXPECT_EQ(ListedProtocols(), made);

    for (const std::string& id : made) {
      if (before.count(id) == 0) Erase(id);
    }
    EXPECT_EQ(ListedProtocols(), before);
  }
};

TEST_F(Soak, RoundsLeaveNothingBehind) {
  // On the disk only when the database is closed, or this would be a test of disks.
  module.LogoutCad();
  UnloadModule();
  platform::WriteProfileText(kSuiteFolder + "\\Keelcomm.ini", "Store", "Flush", "0");
  ASSERT_TRUE(LoadModule());
  ASSERT_EQ(Login(), 1);

  const int rounds = Rounds();
  for (int round = 0; round < kWarmUp && !HasFailure(); ++round) Round();
  const Holdings begin;
  for (int round = 0; round < rounds && !HasFailure(); ++round) Round();
  const Holdings end;
  std::printf("%d rounds: heap %ld -> %ld bytes, resident %ld -> %ld kB, handles %d -> %d\n",
              rounds, begin.heap, end.heap, begin.resident, end.resident, begin.handles,
              end.handles);
  EXPECT_LE(end.heap, begin.heap + kHeapMargin);
  if (end.heap != 0) {
    EXPECT_LE(end.resident, begin.resident + kResidentMargin);
  }
  EXPECT_LE(end.handles, begin.handles);
}

}  // namespace
}  // namespace quillmar::contract
