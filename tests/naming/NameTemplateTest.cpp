#include "naming/NameTemplate.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "platform/System.h"

namespace quillmar {
namespace {

// Values by upper-case token; a token that is not there has none.
TokenValue ValuesFrom(const std::map<std::string, std::string>& values) {
  return [&values](const std::string& token) {
    const auto found = values.find(platform::UpperCase(token));
    return found == values.end() ? std::string() : found->second;
  };
}

TEST(NameTemplate, EachTokenGivesWayToItsValue) {
  const std::map<std::string, std::string> values = {
      {"A", "one"},   {"B", "two words"}, {"SHARE", "50%"},
      {"OPEN", "%A"}, {"NEST", "<%A%>"},  {"DEEP", "%NEST%"},
      {"", "empty"},  {"BLANKS", "  "},   {"PAIR", "%A%%B%"}};
  struct Row {
    const char* text;
    const char* expanded;
  };
  const Row rows[] = {
      {"", ""},
      {"plain", "plain"},
      {"%A%", "one"},
      {"x%a%y%B%z", "xoneytwo wordsz"},
      {"%unknown%", ""},
      {"a%%b", "aemptyb"},
      {"100%", "100%"},
      {"%A% 100% sure", "one 100% sure"},
      {"%A%%", "one%"},
      {"%DEEP%-%PAIR%", "<one>-onetwo words"},
      // The sign that a value brings pairs with the next one behind it.
      {"%SHARE% of %A%", "50A%"},
      {"%OPEN%%", "one"},
      // Only the subtype takes blanks with it, and only those at the very end.
      {"%A% %Subtype%", "one"},
      {"%A% \t%SUBTYPE% \r\n", "one"},
      {"%Subtype% %A%", " one"},
      {"%A% %Subtype% %unknown%", "one  "},
      {"%A%%BLANKS%%Subtype%", "one"},
      {"%A% %unknown%", "one "},
      {"%Subtype%", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ExpandNameTemplate(row.text, ValuesFrom(values)), row.expanded) << row.text;
  }
}

TEST(NameTemplate, SubtypeWithAValueKeepsTheBlanks) {
  const std::map<std::string, std::string> values = {{"SUBTYPE", "B"}};
  EXPECT_EQ(ExpandNameTemplate("x %subtype% ", ValuesFrom(values)), "x B ");
}

TEST(NameTemplate, TokensReachTheSourceAsTheyAreWritten) {
  std::vector<std::string> asked;
  ExpandNameTemplate("%Bom1% %x y%", [&](const std::string& token) {
    asked.push_back(token);
    return std::string();
  });
  EXPECT_EQ(asked, (std::vector<std::string>{"Bom1", "x y"}));
}

TEST(NameTemplate, ARingEndsWithTheTextReached) {
  const std::map<std::string, std::string> values = {
      {"SELF", "%SELF%"}, {"A", "a%B%"}, {"B", "b%A%"}, {"DOUBLE", "%DOUBLE%%DOUBLE%"}};
  EXPECT_EQ(ExpandNameTemplate("<%SELF%>", ValuesFrom(values)), "<%SELF%>");

  const std::string ring = ExpandNameTemplate("%A%", ValuesFrom(values));
  EXPECT_EQ(ring.size(), static_cast<std::size_t>(kMaxNestedValues) + 3);
  EXPECT_TRUE(ring.starts_with("abababab"));

  EXPECT_LE(ExpandNameTemplate("%DOUBLE%", ValuesFrom(values)).size(),
            8 * (static_cast<std::size_t>(kMaxNestedValues) + 1));
}

TEST(NameTemplate, AGrowingValueEndsAtTheLengthBound) {
  const std::string filler(100000, 'x');
  const std::map<std::string, std::string> values = {{"GROW", filler + "%GROW%"}};
  const std::string text = ExpandNameTemplate("%GROW%", ValuesFrom(values));
  EXPECT_GT(text.size(), kMaxNestedLength);
  EXPECT_LE(text.size(), kMaxNestedLength + filler.size() + 6);
}

TEST(NameTemplate, PlainValuesAreNotBounded) {
  const std::map<std::string, std::string> values = {{"BIG", std::string(kMaxNestedLength, 'x')}};
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "%none%-";
  text += "%BIG%%BIG%";
  EXPECT_EQ(ExpandNameTemplate(text, ValuesFrom(values)).size(), 3000 + 2 * kMaxNestedLength);
}

}  // namespace
}  // namespace quillmar
