// Libraries: loading, finding, the entry point of the module.
#include "platform/Modules.h"

#include <gmock/gmock.h>

#include "platform/Files.h"
#include "platform/Processes.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

constexpr std::uint32_t kModuleNotFound = 126;
constexpr std::uint32_t kBadFormat = 193;
constexpr std::uint32_t kAttachFailed = 1114;
constexpr const char* kNotes = "TestLibrary.ini";
constexpr const char* kSection = "Library";

class Modules : public testing::Test {
 protected:
  void SetUp() override { WriteProfileText(kNotes, kSection, nullptr, nullptr); }
  void TearDown() override { SetUp(); }

  static std::string Events() { return ReadProfileText(kNotes, kSection, "Events", "", 256); }
  static void Order(const char* order) { WriteProfileText(kNotes, kSection, "Order", order); }

  TestMachine machine;
  std::string path = machine.Install(QM_TEST_LIBRARY, machine.Folder());
};

TEST_F(Modules, LoadsFindsAndFreesALibrary) {
  EXPECT_EQ(FindLoadedModule(QM_TEST_LIBRARY), nullptr);
  LoadResult loaded = LoadLibraryAt(path);
  ASSERT_TRUE(loaded.library);
  EXPECT_EQ(loaded.error, 0U);
  QmModule module = loaded.library.Get();
  std::string bare = std::string(QM_TEST_LIBRARY).substr(0, std::string(QM_TEST_LIBRARY).find('.'));
  for (const std::string& name :
       {std::string(QM_TEST_LIBRARY), UpperCase(QM_TEST_LIBRARY), bare, LowerCase(path)}) {
    EXPECT_EQ(FindLoadedModule(name), module) << name;
  }
  EXPECT_EQ(FindLoadedModule("C:\\elsewhere\\" QM_TEST_LIBRARY), nullptr);
  EXPECT_TRUE(EqualsNoCase(ModulePath(module), path)) << ModulePath(module);
  auto answer = reinterpret_cast<int (*)()>(FindFunction(module, "QmTestAnswer"));
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer(), 42);
  // Functions of the libraries that it uses are not its own.
  EXPECT_EQ(FindFunction(module, "malloc"), nullptr);
  EXPECT_EQ(FindFunction(module, "qmtestanswer"), nullptr);
  EXPECT_EQ(FindFunction(nullptr, "QmTestAnswer"), nullptr);
  loaded.library.Free();
  EXPECT_EQ(FindLoadedModule(QM_TEST_LIBRARY), nullptr);
  EXPECT_EQ(Events(), "attach unload");
}

TEST_F(Modules, CountsLoads) {
  LoadResult first = LoadLibraryAt(path);
  LoadResult second = LoadLibraryAt(UpperCase(path));
  EXPECT_EQ(first.library.Get(), second.library.Get());
  first.library = Library();
  EXPECT_NE(FindLoadedModule(QM_TEST_LIBRARY), nullptr);
  second.library = std::move(first.library);
  EXPECT_EQ(FindLoadedModule(QM_TEST_LIBRARY), nullptr);
  EXPECT_EQ(Events(), "attach unload");
}

TEST_F(Modules, SaysWhyALibraryDoesNotLoad) {
  machine.WriteFile(machine.InFolder("text.dll"), "no library");
  EXPECT_EQ(LoadLibraryAt(machine.InFolder("text.dll")).error, kBadFormat);
  EXPECT_EQ(LoadLibraryAt(machine.InFolder("absent.dll")).error, kModuleNotFound);
  EXPECT_EQ(LoadLibraryFromSystem("absent.dll").error, kModuleNotFound);
  for (const char* order : {"refuse", "throw"}) {
    Order(order);
    LoadResult refused = LoadLibraryAt(path);
    EXPECT_FALSE(refused.library) << order;
    EXPECT_EQ(refused.error, kAttachFailed) << order;
    EXPECT_EQ(FindLoadedModule(QM_TEST_LIBRARY), nullptr) << order;
  }
  EXPECT_EQ(Events(), "attach attach");
}

TEST_F(Modules, LooksInTheSystemsFoldersOnly) {
  // The folder in which this runs is none of them.
  EXPECT_FALSE(LoadLibraryFromSystem("QmSystemTest.dll").library);
  std::string inWindows = WindowsFolder() + "\\QmSystemTest.dll";
  std::filesystem::copy_file(machine.HostPath(path), machine.HostPath(inWindows));
  LoadResult loaded = LoadLibraryFromSystem("qmsystemtest.dll");
  ASSERT_TRUE(loaded.library);
  EXPECT_TRUE(EqualsNoCase(ModulePath(loaded.library.Get()), inWindows));
  loaded.library.Free();
  EXPECT_TRUE(RemoveFile(inWindows));
}

struct LifeCase {
  const char* order;
  const char* how;
  const char* events;
};

TEST_F(Modules, AreToldOfTheirEnd) {
  const LifeCase cases[] = {
      {"", "free", "attach unload"},
      {"", "keep", "attach end"},
      {"refuse", "free", "attach"},
  };
  std::string program = machine.Install(QM_TEST_PROGRAM, machine.Folder());
  for (const LifeCase& life : cases) {
    SetUp();
    Order(life.order);
    std::string line = QM_TEST_PROGRAM " load " + path + " " + life.how;
    std::optional<Process> process = StartProgram({program, line, "", ShowMode::Normal});
    ASSERT_TRUE(process.has_value());
    process->WaitUntilEndedPumpingMessages();
    EXPECT_EQ(Events(), life.events) << life.order << ", " << life.how;
  }
}

}  // namespace
}  // namespace quillmar::platform
