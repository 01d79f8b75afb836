// The native machine: paths, clock, dialogs, programs inside the process, images.
#include "platform/native/Machine.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <thread>

#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/Profile.h"
#include "platform/Registry.h"
#include "platform/System.h"
#include "support/TestMachine.h"

namespace fs = std::filesystem;

namespace quillmar::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Machine, FindsHostFilesOfWindowsPaths) {
  TestMachine test;
  Machine& machine = Machine::Current();
  fs::path drive = machine.Root() / "drive_c";
  fs::create_directories(drive / "Lib" / "\xC5\x81\xC4\x85");  // UTF-8 for A3 B9
  const std::pair<const char*, fs::path> cases[] = {
      {"C:\\Lib", drive / "Lib"},
      {"c:/lib/", drive / "Lib"},
      {"C:\\lib\\\xB3\xA5", drive / "Lib" / "\xC5\x81\xC4\x85"},
      {"\\lib\\..\\Lib", drive / "Lib"},
      {"C:\\..\\..\\lib", drive / "Lib"},
      {"lib", drive / "Lib"},
      {"C:\\Lib\\New\\File.x", drive / "Lib" / "New" / "File.x"},
      {"D:\\x", machine.Root() / "drive_d" / "x"},
      {"C:", drive},
  };
  for (const auto& [windows, host] : cases) EXPECT_EQ(machine.HostPath(windows), host) << windows;
}

TEST(Machine, PrefersTheExactName) {
  TestMachine test;
  fs::path folder = Machine::Current().Root() / "drive_c" / "Test";
  for (const char* name : {"name", "NAME", "Name"}) std::ofstream(folder / name) << name;
  EXPECT_EQ(Machine::Current().HostPath("C:\\Test\\Name"), folder / "Name");
  EXPECT_EQ(Machine::Current().HostPath("C:\\Test\\nAME"), folder / "NAME");
}

TEST(Machine, NamesWindowsPathsBelowItsRoot) {
  TestMachine test;
  Machine& machine = Machine::Current();
  EXPECT_EQ(machine.WindowsPath(machine.Root() / "drive_c" / "A" / "\xC5\x82.x"), "C:\\A\\\xB3.x");
  EXPECT_EQ(machine.WindowsPath(machine.Root() / "drive_d"), "D:\\");
  for (const fs::path& outside : {machine.Root(), machine.Root() / "registry", fs::path("/"),
                                  fs::path(), machine.Root() / ".." / "drive_c"}) {
    EXPECT_EQ(machine.WindowsPath(outside), "") << outside;
  }
}

TEST(Machine, WithoutAnImageHasNothing) {
  EXPECT_FALSE(FileExists("C:\\"));
  EXPECT_FALSE(OpenKey(Hive::CurrentUser, "Software").has_value());
  EXPECT_FALSE(CreateKey(Hive::CurrentUser, "Software").has_value());
  EXPECT_EQ(MakeTempFile(TempFolder(), "x", "y"), "");
  EXPECT_EQ(ModulePath(nullptr), "");
}

TEST(Machine, KeepsAReadOnlyProfileFileAsItIs) {
  TestMachine test;
  const std::string file = test.InFolder("x.ini");
  test.WriteFile(file, "[M]\r\nk=old\r\n");
  fs::permissions(test.HostPath(file), fs::perms::owner_read);
  EXPECT_FALSE(WriteProfileText(file, "M", "k", "new"));
  EXPECT_TRUE(WriteProfileText(file, "M", "k", "old"));
  EXPECT_EQ(test.ReadFile(file), "[M]\r\nk=old\r\n");
}

// A file is kept as long as nothing changes, and so is the way to it.
TEST(Machine, ReadsTheProfileFileOfTheExactNameOnceThereIsOne) {
  TestMachine test;
  const fs::path folder = Machine::Current().Root() / "drive_c" / "Test";
  const auto read = [] { return ReadProfileText("C:\\Test\\a.ini", "S", "k", "none", 16); };
  const auto settle = [] { std::this_thread::sleep_for(std::chrono::milliseconds(80)); };
  EXPECT_EQ(read(), "none");
  for (const char* name : {"A.INI", "a.ini"}) {
    std::ofstream(folder / name) << "[S]\nk=" << name << "\n";
    settle();
    EXPECT_EQ(read(), name);
    EXPECT_EQ(read(), name);
  }
  fs::remove(folder / "a.ini");
  EXPECT_EQ(read(), "A.INI");
}

TEST(Machine, MovesASetClockWithEachReading) {
  TestMachine test;
  Machine::Current().SetClock(0xFFFFFFFFU);
  EXPECT_EQ(TickCount(), 0xFFFFFFFFU);
  EXPECT_EQ(TickCount(), 0U);
  EXPECT_EQ(TickCount(), 1U);
}

TEST(Machine, HasASettableVolumeSerial) {
  TestMachine test;
  Machine::Current().SetVolumeSerial(0xABCD);
  EXPECT_EQ(VolumeSerial("c:\\"), 0xABCDU);
  EXPECT_EQ(VolumeSerial("d:\\"), 0U);
}

TEST(Machine, AreIndependentOfEachOther) {
  TestMachine outer;
  CreateKey(Hive::CurrentUser, "K")->Set("v", RegistryType::Text, "outer");
  std::optional<RegistryHandle> outerKey = OpenKey(Hive::CurrentUser, "K");
  Machine::Current().SetClock(100);
  {
    TestMachine inner;
    EXPECT_FALSE(OpenKey(Hive::CurrentUser, "K").has_value());
    EXPECT_EQ(outerKey->Query("v")->data, std::string("outer\0", 6));
    DebugOutput("inner");
    Machine::Current().SetClock(5);
  }
  EXPECT_THAT(Machine::Current().DebugLines(), IsEmpty());
  EXPECT_EQ(TickCount(), 100U);
}

TEST(Machine, AnswersDialogsFromItsScript) {
  TestMachine test;
  Machine& machine = Machine::Current();
  machine.Answers().folders = {"C:\\A\\", "D:\\"};
  machine.Answers().saveFiles = {"C:\\A\\file", "C:\\A.b\\file", "C:\\A\\file.ext"};
  SaveQuestion question;
  question.title = "save";
  question.initialPath = "C:\\start";
  question.defaultExtension = "tmu";
  question.filter = "Templates|*.tmu||";
  EXPECT_EQ(AskFolder(0, "C:\\s", "pick"), "C:\\A");
  EXPECT_EQ(AskFolder(0, "C:\\s", "pick"), "D:\\");
  EXPECT_EQ(AskFolder(0, "C:\\s", "pick"), std::nullopt);
  EXPECT_EQ(AskSaveFile(question), "C:\\A\\file.tmu");
  EXPECT_EQ(AskSaveFile(question), "C:\\A.b\\file.tmu");
  EXPECT_EQ(AskSaveFile(question), "C:\\A\\file.ext");
  EXPECT_EQ(AskSaveFile(question), std::nullopt);
  ShowMessage("text", "title", MessageIcon::Error);
  std::vector<std::string> shown;
  for (const ShownDialog& dialog : machine.Shown()) {
    shown.push_back(dialog.kind + "|" + dialog.title + "|" + dialog.text);
  }
  EXPECT_EQ(shown.size(), 8U);
  EXPECT_EQ(shown.front(), "folder|pick|C:\\s");
  EXPECT_EQ(shown[3], "save|save|C:\\start\nTemplates|*.tmu||");
  EXPECT_EQ(shown.back(), "message|title|text");
}

struct SilentHandler : WindowHandler {
  void OnMessage(unsigned) override { ++messages; }
  void OnShown() override { ++shown; }
  int messages = 0;
  int shown = 0;
};

TEST(Machine, ShowsWindowsFromOutside) {
  TestMachine test;
  Machine& machine = Machine::Current();
  SilentHandler handler;
  std::unique_ptr<HiddenWindow> window = HiddenWindow::Create(nullptr, 1, handler);
  EXPECT_FALSE(machine.IsWindowVisible(window->Handle()));
  EXPECT_TRUE(machine.ShowWindowFromOutside(window->Handle(), true));
  EXPECT_TRUE(machine.IsWindowVisible(window->Handle()));
  EXPECT_EQ(handler.shown, 1);
  BringToForeground(window->Handle());
  EXPECT_EQ(machine.ForegroundWindow(), window->Handle());
  BringToForeground(77);
  EXPECT_EQ(machine.ForegroundWindow(), window->Handle());
  window.reset();
  EXPECT_EQ(machine.ForegroundWindow(), 0U);
  EXPECT_FALSE(machine.ShowWindowFromOutside(77, true));
}

TEST(Machine, EndsTheWindowsOfAThreadWithIt) {
  TestMachine test;
  SilentHandler handler;
  std::unique_ptr<HiddenWindow> window;
  std::thread([&] { window = HiddenWindow::Create(nullptr, 1, handler); }).join();
  EXPECT_FALSE(IsLiveWindow(window->Handle()));
  EXPECT_FALSE(PostToWindow(window->Handle(), 0xC000));
  window.reset();
}

TEST(Machine, SearchesLibrariesInItsPath) {
  TestMachine test;
  fs::create_directories(Machine::Current().Root() / "drive_c" / "Tools");
  test.Install(QM_TEST_LIBRARY, "C:\\Tools");
  EXPECT_FALSE(LoadLibraryFromSystem(QM_TEST_LIBRARY).library);
  Machine::Current().SetSearchPath({"C:\\absent", "C:\\tools\\"});
  LoadResult loaded = LoadLibraryFromSystem(QM_TEST_LIBRARY);
  ASSERT_TRUE(loaded.library);
  EXPECT_EQ(ModulePath(loaded.library.Get()), "C:\\Tools\\" QM_TEST_LIBRARY);
}

TEST(Machine, StartsSharedObjectsInsideTheProcess) {
  TestMachine test;
  std::string program = test.Install(QM_TEST_IN_PROCESS, test.Folder());
  for (const char* line : {"x refuse", "x throw"}) {
    EXPECT_FALSE(StartProgram({program, line, "", ShowMode::Normal}).has_value()) << line;
  }
  EXPECT_THAT(Machine::Current().DebugLines(), ElementsAre("x refuse", "x throw"));
  std::optional<Process> process = StartProgram({program, "", "", ShowMode::Normal});
  ASSERT_TRUE(process.has_value());
  EXPECT_EQ(Machine::Current().DebugLines().back(), program);
  EXPECT_TRUE(process->WaitUntilIdle());
  process->WaitUntilEndedPumpingMessages();
  // It is a program, not a library of this one.
  EXPECT_EQ(FindLoadedModule(QM_TEST_IN_PROCESS), nullptr);
  // A library without a start function is no program.
  std::string library = test.Install(QM_TEST_LIBRARY, test.Folder());
  EXPECT_FALSE(StartProgram({library, "", "", ShowMode::Normal}).has_value());
}

// Whether each attach was accepted ("+" or "-"), with the name of the root that is current then.
std::string AttachAndDetach(const fs::path& folder) {
  std::string seen;
  auto attach = [&](const fs::path& module) {
    seen += AttachToImage(module.native()) ? "+" : "-";
    seen += Machine::Current().Root().filename().native() + " ";
  };
  attach("/usr/lib/x.so");
  attach(folder / "one" / "drive_c" / "Test" / "x.dll");
  attach(folder / "one" / "drive_c" / "y.dll");
  attach(folder / "two" / "drive_c" / "x.dll");
  DetachFromImage();
  attach(folder / "two" / "drive_c" / "x.dll");
  DetachFromImage();
  seen += Machine::Current().Root().filename().native() + " ";
  attach(folder / "two" / "drive_c" / "x.dll");
  DetachFromImage();
  DetachFromImage();
  attach(folder / "one" / "drive_c" / "x.dll");
  Machine other("/nowhere");
  MachineScope scope(other);
  attach(folder / "one" / "drive_c" / "x.dll");
  return seen;
}

// In a process of its own, for the attached image stays.
TEST(AttachToImageDeathTest, MakesTheFirstImageCurrentUntilItsModulesAreGone) {
  fs::path folder;
  {
    TestMachine test;
    folder = Machine::Current().Root();
  }
  fs::create_directories(folder / "one" / "drive_c");
  fs::create_directories(folder / "two" / "drive_c");
  EXPECT_EXIT(
      {
        std::cerr << AttachAndDetach(folder);
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "-machine \\+one \\+one -one -one one \\+two \\+one -nowhere");
  fs::remove_all(folder);
}

}  // namespace
}  // namespace quillmar::platform
