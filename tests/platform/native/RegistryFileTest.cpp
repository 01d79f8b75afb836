// Registry files of the native machine: what is read from them, what is written, and that nothing
// in them is lost.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

#include "platform/Registry.h"
#include "platform/native/Machine.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

std::string Utf16(const std::string& ascii) {
  std::string bytes;
  for (char character : ascii) bytes += {character, '\0'};
  return bytes;
}

class RegistryFile : public testing::Test {
 protected:
  RegistryFile() { std::filesystem::create_directories(user.parent_path()); }

  static void Write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }
  static std::string Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  }
  static std::string FirstLine(const std::string& text) {
    return text.substr(0, text.find("\r\n"));
  }
  // "type:data", "-" for no value.
  static std::string Query(const std::string& name, Hive hive = Hive::CurrentUser,
                           const std::string& path = "K") {
    std::optional<RegistryHandle> key = OpenKey(hive, path);
    std::optional<RegistryValue> value = key ? key->Query(name) : std::nullopt;
    if (!value) return "-";
    return std::to_string(static_cast<unsigned>(value->type)) + ":" + value->data;
  }

  TestMachine machine;
  std::filesystem::path user = Machine::Current().Root() / "registry" / "HKEY_CURRENT_USER.reg";
  std::filesystem::path local = Machine::Current().Root() / "registry" / "HKEY_LOCAL_MACHINE.reg";
};

const std::string kHeader4 = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n";
const std::string kHeader5 =
    "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n";

struct LineCase {
  std::string file;
  std::string value;  // of "v" in "K"
};

TEST_F(RegistryFile, ReadsWhatTheRegistryEditorWrites) {
  const LineCase cases[] = {
      {kHeader4 + "\"v\"=\"a\\\\b \\\"c\\\" \\n\"\r\n", "1:a\\b \"c\" \n\0"s},
      {kHeader4 + "\"V\"=\"\xB3\"", "1:\xB3\0"s},
      {kHeader4 + "  \"v\" = \"x\" ; note\n", "1:x\0"s},
      {kHeader4 + "\"v\"=dword:0000ABcd\r", "4:\xCD\xAB\0\0"s},
      {kHeader4 + "\"v\"=hex:01,\\\r\n  02, 3 ,\\\r\n  ff\r\n", "3:\x01\x02\x03\xFF"},
      {kHeader4 + "\"v\"=hex:\r\n", "3:"},
      {kHeader4 + "\"v\"=hex(2):25,b3,00\r\n", "2:%\xB3\0"s},
      {kHeader4 + "\"v\"=hex(7):61,00,62,00,00\r\n", "7:a\0b\0\0"s},
      {kHeader4 + "\"v\"=hex(4d):61\r\n", "77:a"},
      {kHeader5 + "\"v\"=hex(2):42,01,00,00\r\n", "2:\xB3\0"s},
      {kHeader5 + "\"v\"=hex(2):91,03,00,00\r\n", "2:?\0"s},
      {kHeader5 + "\"v\"=hex(1):61,00\r\n", "1:a"},
      {kHeader5 + "\"v\"=\"1\"\r\n\"v\"=-\r\n", "-"},
      {kHeader5 + "\"v\"=\"1\"\r\n[-HKEY_CURRENT_USER\\K]\r\n", "-"},
      {kHeader5 + "[HKEY_CURRENT_USER\\J]\r\n\"v\"=\"1\"\r\n", "-"},
      {kHeader5 + "[hkey_current_user\\k]\r\n\"v\"=\"1\"\r\n", "1:1\0"s},
      {kHeader5 + "[HKEY_LOCAL_MACHINE\\K]\r\n\"v\"=\"1\"\r\n", "-"},
      {kHeader5 + ";\"v\"=\"1\"\r\n", "-"},
      {"\xFF\xFE" + Utf16(kHeader5 + "\"v\"=\"") + "\x42\x01" + Utf16("\"\r\n"), "1:\xB3\0"s},
      {"\xEF\xBB\xBF" + kHeader5 + "\"v\"=\"\xC5\x82\"\r\n", "1:\xB3\0"s},
  };
  for (const LineCase& row : cases) {
    Write(user, row.file);
    EXPECT_EQ(Query("v"), row.value) << row.file;
  }
  Write(local, "REGEDIT4\n[HKEY_CLASSES_ROOT\\P]\n@=\"d\"\n");
  EXPECT_EQ(Query("", Hive::LocalMachine, "Software\\Classes\\P"), "1:d\0"s);
}

// The first line of each is damaged: it must not hurt its neighbours, must be reported, and must be
// in the file as a comment when the next value has been written.
TEST_F(RegistryFile, OutlivesDamage) {
  const std::string lines[] = {
      "\"v",
      "\"v\"",
      "\"v\"=",
      "\"v\"=\"x",
      "\"v\"=\"x\\",
      "\"v\"=\"x\"y",
      "\"v\"=dword:",
      "\"v\"=dword:123456789",
      "\"v\"=dword:xyz",
      "\"v\"=hex",
      "\"v\"=hex:g1",
      "\"v\"=hex:100",
      "\"v\"=hex(:00",
      "\"v\"=hex(xx):00",
      "\"v\"=hex(100000000):00",
      "\"v\"=hex:01,\\",
      "\"v\"=hex:01,\\\r\n",
      "\"v\"=hex:01,\\\r\n; 02",
      "\"v\"=hex:01,\\\r\n\r\n; 02",
      "v=1",
      "=\"x\"",
      "[HKEY_CURRENT_USER\\Open",
      "[HKEY_CURRENT_USER\\" + std::string(300, 'n') + "]",
      std::string(1'000'000, 'x'),
      "\x01\xFF\x80",
  };
  for (const std::string& line : lines) {
    Machine::Current().DebugLines().clear();
    Write(user,
          kHeader4 + "\"a\"=\"1\"\r\n" + line + "\r\n[HKEY_CURRENT_USER\\L]\r\n\"b\"=\"2\"\r\n");
    EXPECT_EQ(Query("a"), "1:1\0"s) << line.substr(0, 40);
    EXPECT_EQ(Query("b", Hive::CurrentUser, "L"), "1:2\0"s) << line.substr(0, 40);
    EXPECT_EQ(Query("v"), "-") << line.substr(0, 40);
    EXPECT_THAT(Machine::Current().DebugLines(), testing::SizeIs(1)) << line.substr(0, 40);
    EXPECT_TRUE(CreateKey(Hive::CurrentUser, "K")->Set("c", RegistryType::Text, "3"));
    EXPECT_THAT(Read(user), HasSubstr("\r\n; " + FirstLine(line) + "\r\n"));
    EXPECT_EQ(Query("b", Hive::CurrentUser, "L"), "1:2\0"s);
  }
}

TEST_F(RegistryFile, OutlivesAnyBytes) {
  const std::string files[] = {
      "",
      "\xFF\xFE",
      "\xFF\xFE[",
      "\xEF\xBB\xBF\xFF\xC0\x80",
      std::string(3, '\0'),
      "[",
      "]",
      "[]",
      "[-]",
      "@",
      "\"",
      "\\\r\n\\",
      "[HKEY_CURRENT_USER]\r\n@=\"x\"",
      "[HKEY_CURRENT_USER\\" + std::string(100'000, '\\') + "]",
      [] {
        std::string deep = "[HKEY_CURRENT_USER";
        for (int i = 0; i < 100'000; ++i) deep += "\\a";
        return deep + "]\r\n\"v\"=\"1\"\r\n";
      }(),
      kHeader4 + "\"v\"=hex:" + std::string(50'000, '\\') + "\r\n",
  };
  for (const std::string& file : files) {
    Write(user, file);
    EXPECT_EQ(Query("absent"), "-");
    EXPECT_TRUE(CreateKey(Hive::CurrentUser, "K")->Set("c", RegistryType::Text, "3"));
    EXPECT_EQ(Query("c"), "1:3\0"s);
  }
}

TEST_F(RegistryFile, IsWrittenForTheRegistryEditor) {
  RegistryHandle key = std::move(*CreateKey(Hive::CurrentUser, "K\\Sub"));
  key.Set("", RegistryType::Text, "d\"\\\xB3");
  key.Set("dw", RegistryType::Dword, "\x01\x02\x03\x04");
  key.Set("lines", RegistryType::Text, "a\nb");
  key.Set("long", RegistryType::Binary, std::string(26, '\x7F'));
  key.Set("x", RegistryType::ExpandableText, "%\xB3");
  EXPECT_EQ(Read(user),
            "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\K\\Sub]\r\n@=\"d\\\"\\\\\xB3\"\r\n"
            "\"dw\"=dword:04030201\r\n\"lines\"=hex(1):61,0a,62,00\r\n"
            "\"long\"=hex:7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,7f,"
            "7f,7f,\\\r\n  7f\r\n\"x\"=hex(2):25,b3,00\r\n");
}

// What the code page cannot hold stays whole, in a file that can.
TEST_F(RegistryFile, KeepsForeignCharacters) {
  Write(user, "\xEF\xBB\xBF" + kHeader5 + "\"\xCE\xB1\"=\"\xCE\xB2\"\r\n");
  EXPECT_EQ(Query("?"), "-");
  EXPECT_TRUE(CreateKey(Hive::CurrentUser, "K")->Set("v", RegistryType::Text, "1"));
  EXPECT_EQ(Read(user).substr(0, 2), "\xFF\xFE");
  EXPECT_THAT(Read(user), HasSubstr("\"\0\xB1\x03\"\0=\0\"\0\xB2\x03\"\0"s));
  EXPECT_EQ(Query("v"), "1:1\0"s);
}

TEST_F(RegistryFile, KeepsCommentsAndForeignKeys) {
  Write(user,
        "REGEDIT4\r\n; top\r\n[HKEY_USERS\\X]\r\n\"y\"=\"z\"\r\n\r\n"
        "[HKEY_CURRENT_USER\\K]\r\n; about v\r\n\"v\"=\"1\"\r\n");
  CreateKey(Hive::CurrentUser, "K")->Set("v", RegistryType::Text, "2");
  EXPECT_EQ(Read(user),
            "REGEDIT4\r\n; top\r\n[HKEY_USERS\\X]\r\n\"y\"=\"z\"\r\n\r\n"
            "[HKEY_CURRENT_USER\\K]\r\n; about v\r\n\"v\"=\"2\"\r\n");
}

TEST_F(RegistryFile, SeesChangesByOthersAtOnce) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    Write(user, kHeader4 + "\"v\"=\"" + digit + "\"\r\n");
    EXPECT_EQ(Query("v"), "1:"s + digit + '\0');
  }
  std::filesystem::remove(user);
  EXPECT_EQ(Query("v"), "-");
}

TEST_F(RegistryFile, IsNotReplacedWhenItCannotBeReadOrWritten) {
  CreateKey(Hive::CurrentUser, "K")->Set("v", RegistryType::Text, "1");
  std::string before = Read(user);
  std::filesystem::permissions(user, std::filesystem::perms::owner_read);
  // Long enough that the file is not read again for its youth.
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  RegistryHandle key = std::move(*OpenKey(Hive::CurrentUser, "K"));
  EXPECT_FALSE(key.Set("v", RegistryType::Text, "2"));
  EXPECT_EQ(Query("v"), "1:1\0"s);
  EXPECT_FALSE(key.DeleteValue("v"));
  EXPECT_FALSE(CreateKey(Hive::CurrentUser, "L").has_value());
  EXPECT_TRUE(key.Set("v", RegistryType::Text, "1"));
  EXPECT_EQ(Query("v"), "1:1\0"s);
  EXPECT_EQ(Read(user), before);
  std::filesystem::remove(user);
  std::filesystem::create_directory(user);
  EXPECT_FALSE(CreateKey(Hive::CurrentUser, "L").has_value());
}

// Two processes add to one hive while readers of a third see whole files only; one of them is
// killed at an arbitrary moment.
TEST_F(RegistryFile, SurvivesWritersThatAreKilled) {
  auto write = [&](const std::string& name) {
    pid_t child = fork();
    if (child != 0) return child;
    Machine own(Machine::Current().Root());
    MachineScope scope(own);
    for (int i = 0; i < 60; ++i) {
      CreateKey(Hive::CurrentUser, "K")->Set(name + std::to_string(i), RegistryType::Text, "x");
    }
    _exit(0);
  };
  pid_t whole = write("a");
  pid_t killed = write("b");
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  kill(killed, SIGKILL);
  waitpid(killed, nullptr, 0);
  waitpid(whole, nullptr, 0);
  EXPECT_THAT(Machine::Current().DebugLines(), testing::IsEmpty());
  for (int i = 0; i < 60; ++i) EXPECT_EQ(Query("a" + std::to_string(i)), "1:x\0"s);
  bool missing = false;
  for (int i = 0; i < 60; ++i) {
    bool found = Query("b" + std::to_string(i)) != "-";
    EXPECT_FALSE(found && missing) << "lost before " << i;
    missing = missing || !found;
  }
}

}  // namespace
}  // namespace quillmar::platform
