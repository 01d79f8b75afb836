#include "naming/SafeFileName.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "naming/NameTokens.h"
#include "naming/UniqueIds.h"
#include "platform/System.h"

namespace quillmar {
namespace {

std::string Safe(std::string text) {
  MakeSafeFileName(text);
  return text;
}

TEST(SafeFileName, ReplacesSeparatorsAndAccentedLetters) {
  EXPECT_EQ(Safe(",/\\:*?\"<>|"), "__________");
  EXPECT_EQ(Safe("\xE1\xE8\xF8\xEF\xEC\xED\xF2\xF3\x9A\x9D\xF9\xFD\x9E\xE9\xFA"),
            "acrdeinostuyzeu");
  EXPECT_EQ(Safe("\xC1\xC8\xD8\xCF\xCC\xCD\xD2\xD3\x8A\x8D\xD9\xDD\x8E\xC9\xDA"),
            "ACRDEINOSTUYZEU");
}

TEST(SafeFileName, LeavesEverythingElse) {
  std::string others;
  for (int byte = 1; byte < 256; ++byte) {
    const std::string one(1, static_cast<char>(byte));
    if (Safe(one) == one) others += one;
  }
  EXPECT_EQ(others.size(), 255u - 40u);
  EXPECT_EQ(Safe("gear 12.5 (a)%~\xFC\xA0.prt"), "gear 12.5 (a)%~\xFC\xA0.prt");
}

TEST(SafeFileName, FolderEndsInOneBackslash) {
  for (const auto& [folder, ended] : {std::pair{"", "\\"}, {"c:", "c:\\"}, {"c:\\", "c:\\"}}) {
    std::string text = folder;
    EnsureTrailingBackslash(text);
    EXPECT_EQ(text, ended);
  }
}

bool IsBase36(const std::string& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); });
}

TEST(SizeCode, IsAFixedCodeOfTheText) {
  EXPECT_EQ(SizeCode("M8 x 40").size(), 10u);
  EXPECT_TRUE(IsBase36(SizeCode("\xE9/\\:*")));
  EXPECT_EQ(SizeCode("M8 x 40"), SizeCode("M8 x 40"));
  EXPECT_NE(SizeCode("M8 x 40"), SizeCode("M8 x 41"));
  EXPECT_EQ(SizeCode(""), "");
}

TEST(UniqueIds, HoldClockAndMachine) {
  UniqueIds ids;
  const std::uint32_t before = platform::TickCount();
  const std::string id = ids.MakeUniqueId("");
  const std::uint32_t after = platform::TickCount();
  ASSERT_EQ(id.size(), 8u);
  ASSERT_TRUE(IsBase36(id));
  const auto ticks = std::stoull(id.substr(0, 7), nullptr, 36);
  EXPECT_GE(ticks, before);
  EXPECT_LE(ticks, after);
  EXPECT_EQ(std::stoul(id.substr(7), nullptr, 36), platform::VolumeSerial("c:\\") % 36);
}

TEST(UniqueIds, NeverRepeatTheLastOne) {
  UniqueIds ids;
  std::string last = ids.MakeUniqueId("");
  for (int i = 0; i < 5; ++i) {
    const std::string next = ids.MakeUniqueId("");
    EXPECT_NE(next, last);
    last = next;
  }
  const std::string named = ids.MakeUniqueId("SP");
  EXPECT_EQ(named.substr(0, 6), "PROFSP");
  EXPECT_EQ(named.size(), 14u);
}

}  // namespace
}  // namespace quillmar
