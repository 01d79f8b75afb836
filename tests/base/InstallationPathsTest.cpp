// Where the suite is looked for, seen from a library that is installed in several ways.
#include "base/InstallationPaths.h"

#include <gtest/gtest.h>

#include "base/RegistryKey.h"
#include "platform/Modules.h"
#include "quillmar/CalculationHost.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

constexpr const char* kServerKey = "SOFTWARE\\Classes\\CLSID\\" QM_HOST_CLASS_ID "\\LocalServer32";
constexpr const char* kVersionKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

class InstallationPathsTest : public ::testing::Test {
 protected:
  // The paths of a module at "<folder>\X\Y\<any>.dll".
  InstallationPaths Installed() {
    const std::string path = machine.Install(SAMPLE_LIBRARY, machine.InFolder("X\\Y"));
    library = platform::LoadLibraryAt(path).library;
    EXPECT_TRUE(library);
    return InstallationPaths(library.Get());
  }

  void SetServer(const std::string& path) {
    RegistryKey key;
    ASSERT_TRUE(key.Create(platform::Hive::LocalMachine, kServerKey));
    ASSERT_TRUE(key.WriteString("", path));
  }

  void PutHost(const std::string& folder) {
    machine.WriteFile(machine.InFolder(folder + "\\" QM_HOST_PROGRAM), "host");
  }

  TestMachine machine;
  platform::Library library;
};

TEST_F(InstallationPathsTest, TheModulesOwnFiles) {
  const InstallationPaths paths = Installed();
  EXPECT_EQ(paths.ModuleFolder(), machine.InFolder("X\\Y"));
  EXPECT_TRUE(paths.ProfileFile().starts_with(machine.InFolder("X\\Y\\")));
  EXPECT_TRUE(paths.ProfileFile().ends_with(".ini"));
}

TEST_F(InstallationPathsTest, SuiteBesideTheModuleThenHigherThenRegistered) {
  const InstallationPaths paths = Installed();
  SetServer("D:\\Suite\\Fendrake\\Hexaplan.exe");
  EXPECT_EQ(paths.GetSuiteFolder(), "D:\\Suite\\Fendrake");
  PutHost("Fendrake");
  EXPECT_EQ(paths.GetSuiteFolder(), machine.InFolder("Fendrake"));
  PutHost("X\\Fendrake");
  EXPECT_EQ(paths.GetSuiteFolder(), machine.InFolder("X\\Fendrake"));
  EXPECT_EQ(paths.GetSuiteFolder(true), "D:\\Suite\\Fendrake");
}

TEST_F(InstallationPathsTest, OddServerPaths) {
  const InstallationPaths paths = Installed();
  SetServer("Hexaplan.exe");
  EXPECT_EQ(paths.GetSuiteFolder(true), "Hexaplan.exe");
  SetServer("C:\\" + std::string(260, 'x') + "\\Hexaplan.exe");  // more than the buffer holds
  EXPECT_EQ(paths.GetSuiteFolder(true), "");
}

TEST_F(InstallationPathsTest, CommonFolderHasExactlyOneBackslash) {
  const InstallationPaths paths = Installed();
  RegistryKey key;
  ASSERT_TRUE(key.Create(platform::Hive::LocalMachine, kVersionKey));
  const std::string before = key.ReadString("CommonFilesDir");
  for (const char* folder : {"C:\\Common", "C:\\Common\\"}) {
    key.WriteString("CommonFilesDir", folder);
    EXPECT_EQ(paths.GetCommonFolder(), "C:\\Common\\Varda");
  }
  key.WriteString("CommonFilesDir", before);
}

}  // namespace
}  // namespace quillmar
