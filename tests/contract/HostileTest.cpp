// A process that is not as one would wish: another locale and floating-point state, damaged files,
// loading and unloading again and again, an end without a farewell.
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Calculation.h"
#include "OpenHandles.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

struct FloatingPointState {
  std::uint32_t sse = 0;
  std::uint16_t x87 = 0;
  bool operator==(const FloatingPointState&) const = default;
};

FloatingPointState CurrentState() {
  FloatingPointState state;
  __asm__ volatile("stmxcsr %0" : "=m"(state.sse));
  __asm__ volatile("fnstcw %0" : "=m"(state.x87));
  state.sse &= ~0x3Fu;  // the flags of what happened
  return state;
}

void Enter(const FloatingPointState& state) {
  __asm__ volatile("ldmxcsr %0" : : "m"(state.sse));
  __asm__ volatile("fnclex\n\tfldcw %0" : : "m"(state.x87));
}

// Rounding up, single precision, traps for invalid operations, divisions by zero and overflows.
constexpr FloatingPointState kHostile = {0x1F80 - 0x680 + 0x4000, 0x0872};

class Hostile : public Calculation {
 protected:
  // Everything that the library made of a calculation that went in, was measured and changed.
  std::vector<std::string> Walk() {
    const std::string id = Calculated(kShaft);
    { Record(id).SetKeyWord("Cadx", "Loop", "1"); }
    ForgetCalls();
    host.Finish(QM_CALLBACK_NEW_PART, id);
    host.Finish(QM_CALLBACK_RECALCULATED, id);
    std::vector<std::string> seen;
    for (const char* function : {"InsertShaft", "ChangeShaft"}) {
      for (const JournalCall& call : Calls(function)) {
        seen.insert(seen.end(), call.arguments.begin() + 1, call.arguments.begin() + 3);
      }
    }
    const Record record(id);
    for (const auto& [name, value] : record.Parameters()) seen.push_back(name + "=" + value);
    for (const char* item : {"DataChanged", "BOM5", "BOM6"}) seen.push_back(record.Global(item));
    return seen;
  }
};

TEST_F(Hostile, AnotherLocaleAndFloatingPointStateChangeNothing) {
  strict::Core().Strict_SetAnswer("GetParameterListEx.text", "d,20.00,note,1.5e0,ratio,0.1");
  strict::Core().Strict_SetAnswer("GetPhysicalPropertiesEx.text", "Volume,1234.5678,Mass,0.1");
  const std::vector<std::string> before = Walk();
  EXPECT_THAT(before, testing::Contains("VXP_PP_Volume=1234.5678"));

  const FloatingPointState usual = CurrentState();
  for (const char* locale : {"German_Germany.1252", "cs_CZ.UTF-8", "de_DE.UTF-8"}) {
    if (std::setlocale(LC_ALL, locale) != nullptr) break;
  }
  Enter(kHostile);
  const std::vector<std::string> hostile = Walk();
  const FloatingPointState after = CurrentState();
  Enter(usual);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(hostile, before);
  EXPECT_EQ(after, kHostile) << "the caller's state was not given back";
}

TEST_F(Hostile, LoadingAndUnloadingLeavesNothingBehind) {
  int handles = 0;
  for (int round = 0; round < 12; ++round) {
    Walk();
    EXPECT_EQ(module.LogoutCad(), 1);
    UnloadModule();
    ASSERT_TRUE(LoadModule());
    ASSERT_EQ(Login(), 1);
    if (round == 3) handles = OpenHandles();
  }
  EXPECT_LE(OpenHandles(), handles);
}

TEST_F(Hostile, TheProcessMayEndInTheMiddleOfASession) {
  testing::GTEST_FLAG(death_test_style) = "fast";
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kShaft));
  EXPECT_EXIT(std::exit(7), testing::ExitedWithCode(7), "");
}

class DamagedFiles : public Contract {
 protected:
  static void Write(const std::string& file, const std::string& bytes) {
    std::filesystem::remove_all(OwnPath(file));
    std::ofstream(OwnPath(file), std::ios::binary) << bytes;
  }
  std::optional<std::string> LocalNameAfterLogin() {
    ClearKey(Hive::CurrentUser, kModuleKey + "\\Strict\\OptGeneral");
    ClearKey(Hive::CurrentUser, kModuleKey + "\\Strict\\OptGeneral2");
    EXPECT_TRUE(LoadModule());
    LoadCad();
    EXPECT_EQ(Login(), 1);
    UnloadModule();
    return TextValue(Hive::CurrentUser, kModuleKey + "\\Strict\\OptGeneral2", "LocalFileName");
  }
};

const std::string kNul(1, '\0');
const std::string kLongLine(1024 * 1024, 'x');

TEST_F(DamagedFiles, NoLanguageFileKeepsTheSessionFromWorking) {
  const std::string file = kModuleFolder + "\\Quillmar.lng";
  const std::string damaged[] = {
      "",
      "[3]\nEN=" + kLongLine + "\n[63]\nEN=Title\n[" + kLongLine + "]\nEN=x\n",
      kNul + kNul + "[3]\nEN=a" + kNul + "b\n[63" + kNul + "]\nEN=t\n",
      "\xFF\xFE[" + kNul + "3" + kNul + "]",
      "\xEF\xBB\xBF[3]\nEN=\xC4",
      "[4294967297]\nEN=a\n[-1]\nEN=b\n[999999999]\nEN=c\n[x]\nEN=~\n",
  };
  for (const std::string& bytes : damaged) {
    Write(file, bytes);
    EXPECT_TRUE(LocalNameAfterLogin().has_value()) << bytes.substr(0, 40);
  }
  std::filesystem::remove(OwnPath(file));
  std::filesystem::create_directory(OwnPath(file));
  EXPECT_TRUE(LocalNameAfterLogin().has_value());
}

TEST_F(DamagedFiles, OfAProfileFileWhatIsWholeIsRead) {
  const std::string items = "[Quillmar-General]\nLocalPartsItems=57\nSharedPartsItems=121\n";
  const std::string name = "LocalFileNameDefault=L %BOM2%\n";
  const struct {
    const char* what;
    std::string bytes;
    const char* expected;
  } cases[] = {
      {"a long line before", items + kLongLine + "\n" + kLongLine + "=v\n" + name, "L %BOM2%"},
      {"a NUL in a line before", items + "a" + kNul + "b=c\n" + name, "L %BOM2%"},
      {"NULs behind", items + name + kNul + kNul + "\n", "L %BOM2%"},
      {"no line end", items + "LocalFileNameDefault=L %BOM2%", "L %BOM2%"},
      {"a long value", items + "LocalFileNameDefault=" + kLongLine + "\n", nullptr},
  };
  for (const auto& one : cases) {
    Write(kSuiteFolder + "\\Hexaplan.ini", one.bytes);
    const std::optional<std::string> read = LocalNameAfterLogin();
    ASSERT_TRUE(read.has_value()) << one.what;
    if (one.expected != nullptr) {
      EXPECT_EQ(*read, one.expected) << one.what;
    } else {
      EXPECT_TRUE(kLongLine.starts_with(*read)) << one.what;
    }
  }
}

}  // namespace
}  // namespace quillmar::contract
