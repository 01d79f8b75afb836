// Files, folders, casing, floating point and foreign calls.
#include "platform/System.h"

#include <gmock/gmock.h>

#include <cfenv>
#include <set>

#include "platform/Files.h"
#include "platform/FloatingPoint.h"
#include "platform/ForeignCall.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

class System : public testing::Test {
 protected:
  TestMachine machine;
};

TEST_F(System, FindsFilesWithoutRegardToCase) {
  machine.WriteFile(machine.InFolder("File\xA3.txt"), "x");
  std::filesystem::create_directory(machine.HostPath(machine.InFolder("Sub")));
  machine.WriteFile(machine.InFolder("Sub\\x.y"), "x");
  for (const char* name : {"File\xA3.txt", "fILE\xB3.TXT", "sub", "SUB\\", "sub/X.Y",
                           "sub\\..\\file\xB3.txt", ".\\sub\\.\\x.y"}) {
    EXPECT_TRUE(FileExists(machine.InFolder(name))) << name;
  }
  for (const char* name : {"File", "File\xA3.txt\\", "Sub\\z", "Sub\\x.y\\z", "none\\x.y"}) {
    EXPECT_FALSE(FileExists(machine.InFolder(name))) << name;
  }
  EXPECT_FALSE(FileExists(""));
  EXPECT_FALSE(FileExists("Y:\\none"));
  EXPECT_TRUE(FileExists("c:\\"));
}

TEST_F(System, RemovesFilesOnly) {
  machine.WriteFile(machine.InFolder("a.txt"), "x");
  machine.WriteFile(machine.InFolder("b.txt"), "x");
  std::filesystem::permissions(machine.HostPath(machine.InFolder("b.txt")),
                               std::filesystem::perms::owner_read);
  EXPECT_TRUE(RemoveFile(machine.InFolder("A.TXT")));
  EXPECT_FALSE(RemoveFile(machine.InFolder("a.txt")));
  EXPECT_FALSE(RemoveFile(machine.InFolder("b.txt")));
  EXPECT_TRUE(FileExists(machine.InFolder("b.txt")));
  EXPECT_FALSE(RemoveFile(machine.Folder()));
  EXPECT_FALSE(RemoveFile(""));
  std::filesystem::permissions(machine.HostPath(machine.InFolder("b.txt")),
                               std::filesystem::perms::owner_all);
}

TEST_F(System, NamesShortFormsOfExistingPathsOnly) {
  machine.WriteFile(machine.InFolder("A rather long name.text"), "x");
  std::string path = machine.InFolder("a RATHER long name.text");
  std::string shortPath = ShortPathName(path);
  EXPECT_TRUE(FileExists(shortPath));
  EXPECT_LE(shortPath.size(), path.size());
  EXPECT_EQ(ShortPathName(machine.InFolder("absent long name")),
            machine.InFolder("absent long name"));
}

TEST_F(System, MakesNewTemporaryFiles) {
  std::set<std::string> paths;
  for (int i = 0; i < 20; ++i) {
    std::string path = MakeTempFile(machine.Folder(), "QmT", "tmu");
    EXPECT_EQ(path.rfind(machine.InFolder("QmT"), 0), 0U) << path;
    EXPECT_EQ(path.substr(path.size() - 4), ".tmu");
    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(machine.ReadFile(path), "");
    paths.insert(LowerCase(path));
  }
  EXPECT_EQ(paths.size(), 20U);
  EXPECT_EQ(MakeTempFile(machine.InFolder("absent"), "QmT", "tmu"), "");
}

TEST_F(System, HasItsFolders) {
  for (const std::string& folder : {TempFolder(), WindowsFolder()}) {
    EXPECT_TRUE(FileExists(folder)) << folder;
    EXPECT_NE(folder.back(), '\\');
  }
  EXPECT_EQ(DocumentsFolder().substr(1, 2), ":\\");
  EXPECT_NE(VolumeSerial("c:\\"), 0U);
  EXPECT_EQ(VolumeSerial("C:\\"), VolumeSerial("c:\\"));
  EXPECT_EQ(VolumeSerial("y:\\"), 0U);
}

TEST_F(System, ClockMovesOn) {
  std::uint32_t start = TickCount();
  while (TickCount() == start) {
  }
  EXPECT_LT(TickCount() - start, 10'000U);
}

TEST_F(System, CasesByTheCodePage) {
  const std::string lower = "az09\x9A\x9C\x9D\x9E\x9F\xB3\xB9\xBA\xBE\xBF\xE0\xEA\xF6\xF8\xFE";
  const std::string upper = "AZ09\x8A\x8C\x8D\x8E\x8F\xA3\xA5\xAA\xBC\xAF\xC0\xCA\xD6\xD8\xDE";
  const std::string neither = "@[`{\x80\x81\xA0\xA1\xB2\xB5\xBB\xD7\xDF\xF7\xFF";
  EXPECT_EQ(UpperCase(lower), upper);
  EXPECT_EQ(LowerCase(upper), lower);
  EXPECT_EQ(UpperCase(neither), neither);
  EXPECT_EQ(LowerCase(neither), neither);
  EXPECT_TRUE(EqualsNoCase(lower, upper));
  EXPECT_FALSE(EqualsNoCase("\xD7", "\xF7"));
  EXPECT_FALSE(EqualsNoCase("a", "ab"));
  EXPECT_TRUE(EqualsNoCase("", ""));
}

TEST(StandardFloatingPoint, RoundsToNearestAndRestores) {
  volatile double one = 1.0;
  volatile double ten = 10.0;
  volatile long double longOne = 1.0L;
  const double nearest = one / ten;
  const long double longNearest = longOne / ten;
  std::fesetround(FE_DOWNWARD);
  {
    StandardFloatingPoint scope;
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    EXPECT_EQ(one / ten, nearest);
    EXPECT_EQ(longOne / ten, longNearest);
  }
  EXPECT_EQ(std::fegetround(), FE_DOWNWARD);
  EXPECT_NE(one / ten, nearest);
  EXPECT_NE(longOne / ten, longNearest);
  std::fesetround(FE_TONEAREST);
}

std::uintptr_t Weigh(std::uintptr_t a, std::uintptr_t b, std::uintptr_t c, std::uintptr_t d,
                     std::uintptr_t e, std::uintptr_t f, std::uintptr_t g, std::uintptr_t h) {
  return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h;
}

TEST(ForeignCall, PassesItsWordsInOrder) {
  const std::uintptr_t words[] = {Word(-1), Word(std::uint32_t{2}), 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(CallForeign(reinterpret_cast<void*>(&Weigh), words, 8), 202);
}

}  // namespace
}  // namespace quillmar::platform
