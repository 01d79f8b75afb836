// Loading and unloading of the library.
#include "Contract.h"
#include "platform/Files.h"

namespace quillmar::contract {
namespace {

class Attach : public Contract {};

TEST_F(Attach, BindsCompanionsAndCallsNobody) {
  ASSERT_TRUE(LoadModule());
  for (const char* companion :
       {"Keelcomm.dll", "Keellink.dll", "Tessio.dll", "QmarBC.dll", "vxfwnd.dll"}) {
    EXPECT_NE(platform::FindLoadedModule(companion), nullptr) << companion;
  }
  EXPECT_THAT(CalledFunctions(), IsEmpty());
  EXPECT_FALSE(HostSide::Runs());
}

TEST_F(Attach, UnloadingReleasesCompanionsAndForgetsTheSession) {
  ASSERT_TRUE(LoadModule());
  LoadCad();
  ASSERT_EQ(Login(), 1);
  const QmModule first = loaded.Get();
  EXPECT_EQ(platform::LoadLibraryAt(kModuleFolder + "\\Quillmar.dll").library.Get(), first)
      << "a library is loaded once";
  UnloadModule();
  for (const char* library :
       {"Quillmar.dll", "Keelcomm.dll", "Keellink.dll", "Tessio.dll", "QmarBC.dll", "vxfwnd.dll"}) {
    EXPECT_EQ(platform::FindLoadedModule(library), nullptr) << library;
  }
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(module.GetCadHinstance(), nullptr);
  EXPECT_EQ(Login(), 1);
  EXPECT_EQ(status, 1);
}

TEST_F(Attach, DoesWithoutWhatMayBeMissing) {
  for (const char* file : {"\\QmarBC.dll", "\\vxfwnd.dll", "\\Tessio.dll"}) {
    ASSERT_TRUE(platform::RemoveFile(kSuiteFolder + file)) << file;
  }
  for (const char* file : {"\\Quillmar.lng", "\\Quillmar.ini", "\\ProtConv.ini"}) {
    platform::RemoveFile(kModuleFolder + file);
  }
  ASSERT_TRUE(LoadModule());
  LoadCad();
  EXPECT_EQ(Login(), 1);
}

TEST_F(Attach, FindsTheInterProcessLibraryInTheCommonFolder) {
  SetText(Hive::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion", "CommonFilesDir",
          "C:\\Shared files\\");
  ASSERT_TRUE(MoveFileTo(kSuiteFolder + "\\Tessio.dll", "C:\\Shared files\\Varda", "Tessio.dll"));
  ASSERT_TRUE(LoadModule());
  const QmModule tessio = platform::FindLoadedModule("Tessio.dll");
  ASSERT_NE(tessio, nullptr);
  EXPECT_STRCASEEQ(platform::ModulePath(tessio).c_str(), "C:\\Shared files\\Varda\\Tessio.dll");
}

TEST_F(Attach, UsesAStorageLibraryThatIsLoadedAlready) {
  const QmModule own = LoadCad("Lacking\\Com_CopyProtocol\\Keelcomm.dll");
  ASSERT_TRUE(LoadModule());
  EXPECT_EQ(platform::FindLoadedModule("Keelcomm.dll"), own);
  // None was loaded beside it.
  EXPECT_STRCASEEQ(platform::ModulePath(platform::FindLoadedModule("Keelcomm.dll")).c_str(),
                   (kCadFolder + "\\Lacking\\Com_CopyProtocol\\Keelcomm.dll").c_str());
}

TEST_F(Attach, StandsASecondLevelAboveTheModule) {
  // The suite's folder is looked for beside the module's folder and one level higher.
  ASSERT_TRUE(MoveFileTo(kModuleFolder, "C:\\Vantorel\\Deep", "Quillmar"));
  platform::LoadResult result =
      platform::LoadLibraryAt("C:\\Vantorel\\Deep\\Quillmar\\Quillmar.dll");
  ASSERT_TRUE(result.library);
  const QmModule keelcomm = platform::FindLoadedModule("Keelcomm.dll");
  ASSERT_NE(keelcomm, nullptr);
  EXPECT_STRCASEEQ(platform::ModulePath(keelcomm).c_str(),
                   (kSuiteFolder + "\\Keelcomm.dll").c_str());
}

}  // namespace
}  // namespace quillmar::contract
