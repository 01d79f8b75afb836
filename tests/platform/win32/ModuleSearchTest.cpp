// Where libraries are looked for, with a library in a folder that is also the current one.
#include <gtest/gtest.h>

#include "platform/Modules.h"
#include "platform/System.h"
#include "platform/win32/Win32.h"

namespace quillmar::platform {
namespace {

constexpr char kName[] = "QmOnlyHere.dll";

class ModuleSearchTest : public testing::Test {
 protected:
  ModuleSearchTest() : folder(TempFolder() + "\\QmSearch") {
    GetEnvironmentVariableA("PATH", path, sizeof path);
    GetCurrentDirectoryA(sizeof current, current);
    CreateDirectoryA(folder.c_str(), nullptr);
    CopyFileA(ModulePath(nullptr).c_str(), (folder + "\\" + kName).c_str(), FALSE);
    SetCurrentDirectoryA(folder.c_str());
  }
  ~ModuleSearchTest() override {
    SetCurrentDirectoryA(current);
    SetEnvironmentVariableA("PATH", path);
    DeleteFileA((folder + "\\" + kName).c_str());
    RemoveDirectoryA(folder.c_str());
  }

  std::string folder;
  char path[4096] = "";
  char current[MAX_PATH] = "";
};

// Entries of PATH that depend on the current folder would let anyone put a library there.
TEST_F(ModuleSearchTest, NeverLooksIntoTheCurrentFolder) {
  const std::string withoutDrive = folder.substr(2);
  for (const std::string& entry : {std::string(), std::string(";.;..\\QmSearch;"), withoutDrive,
                                   "." + withoutDrive, std::string("C:")}) {
    SetEnvironmentVariableA("PATH", entry.c_str());
    const LoadResult result = LoadLibraryFromSystem(kName);
    EXPECT_FALSE(result.library) << entry;
    EXPECT_EQ(result.error, static_cast<DWORD>(ERROR_MOD_NOT_FOUND)) << entry;
  }
  EXPECT_FALSE(LoadLibraryAt(kName).library);
  EXPECT_FALSE(LoadLibraryAt(withoutDrive + "\\" + kName).library);
}

TEST_F(ModuleSearchTest, TriesThePathFolders) {
  const std::string entries[] = {"C:\\none;" + folder, "\"" + folder + "\";", folder + "\\"};
  for (const std::string& entry : entries) {
    SetEnvironmentVariableA("PATH", entry.c_str());
    const LoadResult result = LoadLibraryFromSystem(kName);
    EXPECT_TRUE(result.library) << entry;
    EXPECT_EQ(result.error, 0U) << entry;
    EXPECT_EQ(FindLoadedModule(kName), result.library.Get()) << entry;
  }
  EXPECT_EQ(FindLoadedModule(kName), nullptr);
}

// The host's setting decides whether the system shows boxes of its own.
TEST_F(ModuleSearchTest, LeavesTheErrorModeAsItWas) {
  const DWORD before = GetThreadErrorMode();
  SetThreadErrorMode(SEM_NOOPENFILEERRORBOX, nullptr);
  LoadLibraryAt("C:\\none\\none.dll");
  EXPECT_EQ(GetThreadErrorMode(), static_cast<DWORD>(SEM_NOOPENFILEERRORBOX));
  SetThreadErrorMode(before, nullptr);
}

}  // namespace
}  // namespace quillmar::platform
