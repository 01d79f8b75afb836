// Profile files. The expectations are what the Windows profile functions do; both backends are held
// to them.
#include "platform/Profile.h"

#include <gmock/gmock.h>

#include <array>
#include <iterator>
#include <utility>

#include "platform/System.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

using namespace std::string_literals;

class Profile : public testing::Test {
 protected:
  // What a read writes, up to its length; the NULs behind it are checked.
  std::string Read(const char* section, const char* key, const char* fallback, std::size_t size) {
    std::string buffer(size + 2, '#');
    std::size_t length = GetProfileText(file, section, key, fallback, buffer.data(), size);
    EXPECT_EQ(buffer.substr(size), "##") << "written beyond the buffer";
    if (size == 0) return "nothing, " + std::to_string(length);
    EXPECT_LT(length, size);
    EXPECT_EQ(buffer[length], '\0');
    bool list = (section == nullptr || key == nullptr) && length + 2 <= size;
    EXPECT_TRUE(!list || buffer[length + 1] == '\0') << "a list without its end";
    return buffer.substr(0, length);
  }

  std::string Value(const char* section, const char* key) {
    return Read(section, key, "(none)", 256);
  }

  // Empty lines are the writer's choice.
  static std::string WithoutEmptyLines(std::string text) {
    for (std::size_t at; (at = text.find("\r\n\r\n")) != std::string::npos;) text.erase(at, 2);
    return text;
  }

  TestMachine machine;
  std::string file = machine.InFolder("test.ini");
};

struct ReadCase {
  std::string contents;
  const char* section;
  const char* key;
  std::string expected;
};

TEST_F(Profile, FindsValues) {
  const ReadCase cases[] = {
      // names
      {"[Main]\r\nKey=v\r\n", "main", "KEY", "v"},
      {"[Main]\r\nKey=v\r\n", " Main ", "\tKey ", "v"},
      {"[ Main ]\r\n \tKey \t=v\r\n", "Main", "Key", "v"},
      {"[Main]x]y\r\nKey=v\r\n", "Main]x", "Key", "v"},
      {"[M]\r\nk=1\r\nK=2\r\n", "M", "K", "1"},
      {"[M]\r\na=1\r\n[N]\r\n[M]\r\nk=2\r\n", "M", "k", "(none)"},
      {"[M\r\nk=1\r\n", "M", "k", "(none)"},
      {"[O]\r\n[M\r\nk=1\r\n", "O", "k", "1"},
      {"k=1\r\n[M]\r\nk=2\r\n", "", "k", "1"},
      {"[M]\r\n\xA5=1\r\n", "M", "\xA5", "1"},
      {"[M]\r\n\"k\"=1\r\n", "M", "\"k\"", "1"},
      // values
      {"[M]\r\nk=  a b\t\r\n", "M", "k", "a b"},
      {"[M]\r\nk=\r\n", "M", "k", ""},
      {"[M]\r\nk\r\n", "M", "k", "(none)"},
      {"[M]\r\nk=a=b\r\n", "M", "k", "a=b"},
      {"[M]\r\nk=\"a\"\r\n", "M", "k", "a"},
      {"[M]\r\nk=' a '\r\n", "M", "k", " a "},
      {"[M]\r\nk=\"\"a\"\"\r\n", "M", "k", "\"a\""},
      {"[M]\r\nk=\"a'\r\n", "M", "k", "\"a'"},
      {"[M]\r\nk=\"a\" b\r\n", "M", "k", "\"a\" b"},
      {"[M]\r\nk=\"\r\n", "M", "k", "\""},
      {"[M]\r\nk=a ; b\r\n", "M", "k", "a ; b"},
      {"[M]\r\n;k=1\r\n", "M", ";k", "1"},
      {"[M]\r\n;k=1\r\n", "M", "k", "(none)"},
      {"[M]\r\nk=\xA0\x81\x98\xFF\r\n", "M", "k", "\xA0\x81\x98\xFF"},
      // line ends and strange bytes
      {"[M]\nk=1\nl=2", "M", "l", "2"},
      {"[M]\rk=1\rl=2\r", "M", "k", "1"},
      {"[M]\rk=1\nl=2\r\nm=3", "M", "l", "2"},
      {"[M]\r\nk=1\x1A\r\n\x1A", "M", "k", "1"},
      {"[M]\r\nk=a\0b\r\nl=2\r\n"s, "M", "k", "a"},
      {"[M]\r\nk\0x=a\r\n"s, "M", "k", "a"},
      {"[M\0x]\r\nk=a\r\n"s, "M", "k", "a"},
      {"\xEF\xBB\xBF[M]\r\nk=\xC5\x82\r\n", "M", "k", "\xB3"},
      {"\xFF\xFE[\0M\0]\0\n\0k\0=\0\x42\x01"s, "M", "k", "\xB3"},
      {"", "M", "k", "(none)"},
  };
  int number = 0;
  for (const ReadCase& row : cases) {
    // A file of its own for each: a system may tell versions of a file by time and size only.
    file = machine.InFolder(std::to_string(++number) + ".ini");
    machine.WriteFile(file, row.contents);
    EXPECT_EQ(Value(row.section, row.key), row.expected)
        << testing::PrintToString(row.contents) << " [" << row.section << "] " << row.key;
  }
}

TEST_F(Profile, ListsSectionsAndKeys) {
  machine.WriteFile(file,
                    "early=1\r\n[Two]\r\nb=1\r\n;c=2\r\nnoeq\r\nB=3\r\n\"q\"=4\r\n= 5\r\n= 6\r\n"
                    "[]\r\n[One]\r\n[Empty]\r\n[one]\r\nk=1\r\n");
  EXPECT_EQ(Read(nullptr, nullptr, "", 64), "Two\0One\0Empty\0one\0"s);
  EXPECT_EQ(Read(nullptr, "b", "", 64), "Two\0One\0Empty\0one\0"s);
  EXPECT_EQ(Read("two", nullptr, "", 64), "b\0B\0\"q\"\0\0"s);
  EXPECT_EQ(Read("One", nullptr, "", 64), "");
  EXPECT_EQ(Read("Empty", nullptr, "(none)", 64), "(none)");
  EXPECT_EQ(Read("Absent", nullptr, "\"quoted\" ", 64), "\"quoted\" ");
  EXPECT_EQ(Read("Absent", nullptr, nullptr, 64), "");
}

struct SizeCase {
  std::size_t size;
  std::string value;     // of "abcdef"
  std::string quoted;    // of "\"abc\""
  std::string keys;      // "aa", "b"
  std::string sections;  // "Main", "N"
};

TEST_F(Profile, CutsToTheBuffer) {
  machine.WriteFile(file, "[Main]\r\nv=abcdef\r\nq=\"abc\"\r\n[N]\r\naa=1\r\nb=2\r\n");
  const SizeCase cases[] = {
      {0, "nothing, 0", "nothing, 0", "nothing, 0", "nothing, 0"},
      {1, "", "", "", ""},
      {2, "a", "a", "(", ""},
      {3, "ab", "ab", "a", "M"},
      // A buffer that the value just fits costs the last character before the quote.
      {4, "abc", "ab", "aa", "Ma"},
      {5, "abcd", "abc", "aa\0"s, "Mai"},
      {6, "abcde", "abc", "aa\0b"s, "Main"},
      {7, "abcdef", "abc", "aa\0b\0"s, "Main\0"s},
      {8, "abcdef", "abc", "aa\0b\0"s, "Main\0N"s},
      {9, "abcdef", "abc", "aa\0b\0"s, "Main\0N\0"s},
      {10, "abcdef", "abc", "aa\0b\0"s, "Main\0N\0"s},
  };
  for (const SizeCase& row : cases) {
    EXPECT_EQ(Read("Main", "v", "", row.size), row.value) << row.size;
    EXPECT_EQ(Read("Main", "q", "", row.size), row.quoted) << row.size;
    EXPECT_EQ(Read("N", nullptr, "(none)", row.size), row.keys) << row.size;
    EXPECT_EQ(Read(nullptr, nullptr, "", row.size), row.sections) << row.size;
  }
  EXPECT_EQ(GetProfileText(file, "Main", "v", "", nullptr, 10), 0U);
}

TEST_F(Profile, AnswersTheFallbackWithoutItsTrailingBlanks) {
  const std::array<std::array<const char*, 2>, 7> cases = {{{"x", "x"},
                                                            {" x  ", " x"},
                                                            {"  ", " "},
                                                            {"x\t", "x\t"},
                                                            {"\"x\" ", "x"},
                                                            {"", ""},
                                                            {nullptr, ""}}};
  for (bool present : {false, true}) {
    if (present) machine.WriteFile(file, "[M]\r\nk=1\r\n");
    for (const auto& [fallback, expected] : cases) {
      EXPECT_EQ(Read("M", "absent", fallback, 64), expected);
      EXPECT_EQ(Read("N", "absent", fallback, 64), expected);
    }
  }
}

TEST_F(Profile, ReadsNumbersAsFarAsTheyGo) {
  const std::pair<const char*, int> cases[] = {
      {"42", 42},
      {"+1", 1},
      {"-1", -1},
      {"42A94967297", 42},
      {"4294967297", 1},
      {"4294967295", -1},
      {"-2147483648", -2147483647 - 1},
      {"0x10", 0},
      {"1e5", 1},
      {"abc", 0},
      {"- 3", 0},
      {"--3", 0},
      {"+", 0},
      {"\"12\"", 12},
      {"1 2", 1},
      {"\" 7\"", 7},
      {"", -7},
  };
  std::string contents = "[N]\r\n";
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    contents += std::to_string(i) + "=" + cases[i].first + "\r\n";
  }
  machine.WriteFile(file, contents);
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(ReadProfileInt(file, "N", std::to_string(i), -7), cases[i].second) << cases[i].first;
  }
  EXPECT_EQ(ReadProfileInt(file, "N", "absent", -7), -7);
  EXPECT_EQ(ReadProfileInt(machine.InFolder("absent.ini"), "N", "0", 5), 5);
}

TEST_F(Profile, ReadsTextsUpToTheirSize) {
  machine.WriteFile(file, "[M]\r\nk=abcdef\r\n");
  EXPECT_EQ(ReadProfileText(file, "M", "k", "", 4), "abc");
  EXPECT_EQ(ReadProfileText(file, "M", "k", "", 0), "");
  EXPECT_EQ(ReadProfileText(file, "M", "l", "none ", 64), "none");
}

TEST_F(Profile, ReadsLinesOfAMegabyte) {
  const std::string value(1'000'000, 'v');
  machine.WriteFile(file, "[M]\r\nk=" + value + "\r\nl=2\r\n");
  std::string buffer(value.size() + 10, '#');
  EXPECT_EQ(GetProfileText(file, "M", "k", "", buffer.data(), buffer.size()), value.size());
  EXPECT_EQ(buffer.substr(0, value.size()), value);
  EXPECT_EQ(Value("M", "l"), "2");
  EXPECT_EQ(Read("M", "k", "", 1001), value.substr(0, 1000));
}

TEST_F(Profile, SeesChangesByOthersAtOnce) {
  for (int round = 0; round < 20; ++round) {
    // The same size each time, within the resolution of the file's time.
    const std::string value(1, static_cast<char>('a' + round));
    machine.WriteFile(file, "[M]\r\nk=" + value + "longer"s.substr(0, round % 3) + "\r\n");
    EXPECT_EQ(Value("M", "k").substr(0, 1), value);
  }
  std::filesystem::remove(machine.HostPath(file));
  EXPECT_EQ(Value("M", "k"), "(none)");
}

TEST_F(Profile, LooksForNamesWithoutFolderInTheWindowsFolder) {
  const std::string inWindows = WindowsFolder() + "\\QmProfileTest.ini";
  machine.WriteFile(inWindows, "[M]\r\nk=windows\r\n");
  file = "qmprofiletest.ini";
  EXPECT_EQ(Value("M", "k"), "windows");
  EXPECT_TRUE(WriteProfileText(file, "M", "k", "changed"));
  EXPECT_NE(machine.ReadFile(inWindows).find("k=changed"), std::string::npos);
  std::filesystem::remove(machine.HostPath(inWindows));
}

struct WriteCase {
  const char* section;
  const char* key;
  const char* value;
  const char* contents;  // afterwards
};

TEST_F(Profile, ChangesOneLineAndKeepsTheOthers) {
  const std::string before =
      "; about\r\n[One]\r\na=1\r\n;c=2\r\nb=\"x\"\r\n[Two]\r\na=3\r\nnoeq\r\n";
  const WriteCase cases[] = {
      {"One", "a", "9", "; about\r\n[One]\r\na=9\r\n;c=2\r\nb=\"x\"\r\n[Two]\r\na=3\r\nnoeq\r\n"},
      {" one ", " A ", "  9 ",
       "; about\r\n[One]\r\na=9 \r\n;c=2\r\nb=\"x\"\r\n[Two]\r\na=3\r\nnoeq\r\n"},
      {"Two", "noeq", "1",
       "; about\r\n[One]\r\na=1\r\n;c=2\r\nb=\"x\"\r\n[Two]\r\na=3\r\nnoeq=1\r\n"},
      {"One", "new", "",
       "; about\r\n[One]\r\na=1\r\n;c=2\r\nb=\"x\"\r\nnew=\r\n[Two]\r\na=3\r\nnoeq\r\n"},
      {"Three", "k", "\xA5",
       "; "
       "about\r\n[One]\r\na=1\r\n;c=2\r\nb=\"x\"\r\n[Two]\r\na=3\r\nnoeq\r\n[Three]\r\nk=\xA5\r\n"},
      {"Two", "a", nullptr, "; about\r\n[One]\r\na=1\r\n;c=2\r\nb=\"x\"\r\n[Two]\r\nnoeq\r\n"},
      {"One", nullptr, nullptr, "; about\r\n[Two]\r\na=3\r\nnoeq\r\n"},
      {"One", nullptr, "x", "; about\r\n[Two]\r\na=3\r\nnoeq\r\n"},
      {"One", "absent", nullptr, before.c_str()},
      {"Absent", nullptr, nullptr, before.c_str()},
      {"One", "a", "1", before.c_str()},
  };
  int number = 0;
  for (const WriteCase& row : cases) {
    file = machine.InFolder(std::to_string(++number) + ".ini");
    machine.WriteFile(file, before);
    EXPECT_TRUE(WriteProfileText(file, row.section, row.key, row.value)) << number;
    EXPECT_EQ(WithoutEmptyLines(machine.ReadFile(file)), row.contents) << number;
  }
}

TEST_F(Profile, ClosesALastLineThatIsOpen) {
  for (const char* section : {"M", "N"}) {
    file = machine.InFolder(std::string(section) + ".ini");
    machine.WriteFile(file, "[M]\r\na=1");
    EXPECT_TRUE(WriteProfileText(file, section, "b", "2"));
    const std::string heading = section == "M"s ? "" : "[N]\r\n";
    EXPECT_EQ(WithoutEmptyLines(machine.ReadFile(file)), "[M]\r\na=1\r\n" + heading + "b=2\r\n");
  }
}

TEST_F(Profile, WritesNewFilesAndNoOthers) {
  EXPECT_TRUE(WriteProfileText(file, "M", "k", "v"));
  EXPECT_EQ(machine.ReadFile(file), "[M]\r\nk=v\r\n");
  EXPECT_FALSE(WriteProfileText(file, nullptr, "k", "v"));
  EXPECT_FALSE(WriteProfileText(machine.InFolder("absent\\x.ini"), "M", "k", "v"));
  EXPECT_FALSE(WriteProfileText(machine.Folder(), "M", "k", "v"));
}

TEST_F(Profile, BringsEveryByteBack) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) {
    bool lineEnd = byte == '\r' || byte == '\n';
    if (!lineEnd) bytes += static_cast<char>(byte);
  }
  bytes = "<" + bytes + ">";
  EXPECT_TRUE(WriteProfileText(file, "M", "k", bytes.c_str()));
  EXPECT_EQ(Read("M", "k", "", 512), bytes);
}

}  // namespace
}  // namespace quillmar::platform
