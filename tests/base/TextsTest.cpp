// Numbers and lists: the odd rules, each with the inputs that tell it from a plainer one.
#include "base/Texts.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillmar {
namespace {

using Items = std::vector<std::string>;

TEST(Texts, NumbersAreWrittenWithEightDigits) {
  const std::pair<double, const char*> rows[] = {
      {0.0, "0"},         {12.5, "12.5"},     {1.0 / 3.0, "0.33333333"},
      {-7.0, "-7"},       {1e9, "1e+09"},     {123456789.0, "1.2345679e+08"},
      {0.0001, "0.0001"}, {0.00001, "1e-05"}, {99999999.5, "1e+08"},
      {1e-300, "1e-300"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(FormatNumber(value), text);
}

TEST(Texts, NumbersAreReadAsFarAsTheyGo) {
  const std::pair<const char*, double> rows[] = {
      {"12.5mm", 12.5},
      {"  -3e2x", -300.0},
      {"+4", 4.0},
      {"12,5", 12.0},
      {"", 0.0},
      {"abc", 0.0},
      {".5", 0.5},
      {"inf", 0.0},
      {"nan", 0.0},
      {"+-4", 0.0},
      {"1e400", std::numeric_limits<double>::infinity()},
  };
  for (const auto& [text, value] : rows) EXPECT_EQ(ParseReal(text), value) << text;
}

TEST(Texts, IntegersStopAtTheFirstOtherCharacterAndNeverWrap) {
  const std::pair<const char*, int> rows[] = {
      {"7.5", 7},
      {" \t-12x", -12},
      {"+1", 1},
      {"", 0},
      {"x1", 0},
      {"99999999999", 2147483647},
      {"-99999999999", -2147483647 - 1},
  };
  for (const auto& [text, value] : rows) EXPECT_EQ(ParseInt(text), value) << text;
}

TEST(Texts, NumberTestTellsValuesFromExpressions) {
  for (const char* text : {"12,5", "1e-3", "-7", "+7", "1.5E+2", "0", "5.e3", ",5"}) {
    EXPECT_TRUE(IsNumber(text)) << text;
  }
  for (const char* text : {"", "1e", "e5", "1.2.3", "D1/2", "1e5.2", "1-2", "1e5e2", "5.", "-",
                           "1 ", ".", "1e+", "--1"}) {
    EXPECT_FALSE(IsNumber(text)) << text;
  }
}

TEST(Texts, ListsStopAtALeadingSeparator) {
  EXPECT_EQ(SplitList("a;b;c", ";"), (Items{"a", "b", "c"}));
  EXPECT_EQ(SplitList("a;b;", ";"), (Items{"a", "b"}));
  EXPECT_EQ(SplitList(";a", ";"), (Items{";a"}));
  EXPECT_EQ(SplitList("a;;b", ";"), (Items{"a", ";b"}));
  EXPECT_EQ(SplitList("", ";"), Items{});
  EXPECT_EQ(SplitList("r1<@N>r2<@N>", "<@N>"), (Items{"r1", "r2"}));
}

TEST(Texts, CallbackListsKeepEmptyPieces) {
  EXPECT_EQ(SplitKeepingEmpty("A,B,", ','), (Items{"A", "B"}));
  EXPECT_EQ(SplitKeepingEmpty("A,,B", ','), (Items{"A", "", "B"}));
  EXPECT_EQ(SplitKeepingEmpty(",", ','), (Items{""}));
  EXPECT_EQ(SplitKeepingEmpty("", ','), Items{});
}

TEST(Texts, TextBehindTheLastTerminatorIsDropped) {
  const auto pieces = SplitTerminated("a<@EL><@EL>b<@EL>tail", "<@EL>");
  EXPECT_EQ(pieces, (std::vector<std::string_view>{"a", "", "b"}));
}

TEST(Texts, ReplacingDoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(ReplaceAll("a,b,,c", ",", "<VXCOMMA>"), "a<VXCOMMA>b<VXCOMMA><VXCOMMA>c");
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
}

}  // namespace
}  // namespace quillmar
