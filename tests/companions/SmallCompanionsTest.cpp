// The companions of which a session needs little more than that they are there.
#include <gtest/gtest.h>

#include <string>

#include "platform/Files.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/Profile.h"
#include "quillmar/BoltedConnections.h"
#include "quillmar/UserParts.h"
#include "support/TestMachine.h"

namespace quillmar::test {
namespace {

class SmallCompanionsTest : public ::testing::Test {
 protected:
  void Load(const char* file) {
    library = platform::LoadLibraryAt(machine.Install(file, machine.Folder())).library;
  }

  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(platform::FindFunction(library.Get(), name));
  }

  TestMachine machine;
  platform::Library library;
};

TEST_F(SmallCompanionsTest, BoltedConnectionsAreTakenByIdentifier) {
  Load(QM_BOLTED_CONNECTION_LIBRARY);
  using TakeConnection = int(QM_CDECL*)(const char*);
  for (const char* name :
       {"InsertBoltedConnection", "EditBoltedConnection", "PrepareMCWProtocol"}) {
    const auto take = Find<TakeConnection>(name);
    ASSERT_NE(take, nullptr) << name;
    EXPECT_NE(take("P1"), 0) << name;
    EXPECT_EQ(take(""), 0) << name;
    EXPECT_EQ(take(nullptr), 0) << name;
  }
  using EditAgain = int(QM_CDECL*)(const char*, int, int);
  const auto edit = Find<EditAgain>("EditBoltedConnection2");
  ASSERT_NE(edit, nullptr);
  EXPECT_NE(edit("P1", 1, 2), 0);
}

TEST_F(SmallCompanionsTest, AWindowThatIsGoneIsNotBroughtToTheFront) {
  Load(QM_FOREGROUND_LIBRARY);
  using BringToFront = int(QM_CDECL*)(QmWindow);
  const auto bring = Find<BringToFront>("McSetForegroundWindow");
  ASSERT_NE(bring, nullptr);
  EXPECT_EQ(bring(0), 0);
  EXPECT_EQ(bring(0x7FFFFFFF), 0);
}

TEST_F(SmallCompanionsTest, ADrawingIsTranslatedFromItsInsertionPoint) {
  Load(QM_LISP_LIBRARY);
  using GenerateLisp = int(QM_CDECL*)(const char*, const char*, const char*, const char*, int,
                                      double, double, int, int, int, double, double);
  const auto generate = Find<GenerateLisp>("GenerateLisp");
  ASSERT_NE(generate, nullptr);
  const std::string drawing = machine.InFolder("part.dxf");
  const std::string base = machine.InFolder("part");
  const std::string errors = machine.InFolder(QM_LISP_ERRORS);
  const auto call = [&](const char* view) {
    return generate(drawing.c_str(), base.c_str(), view, "", 0, 10, 20, 0, 0, 0, 0.001, 0.01);
  };
  EXPECT_EQ(call("USER"), 0);
  EXPECT_TRUE(platform::FileExists(errors));
  machine.WriteFile(drawing,
                    "0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n70\n1\n0\nVERTEX\n10\n11\n20\n22.5\n"
                    "0\nSEQEND\n0\nLINE\n10\n1\n20\n2\n11\n3\n21\n4\n0\nENDSEC\n0\nEOF\n");
  EXPECT_EQ(call("SIDE"), 0);
  EXPECT_EQ(call("USER"), 1);
  EXPECT_FALSE(platform::FileExists(errors));
  const std::string lisp = machine.ReadFile(base + ".lsp");
  EXPECT_NE(lisp.find("(+ (car at) 1.000000) (+ (cadr at) 2.500000)"), std::string::npos) << lisp;
  EXPECT_NE(lisp.find("(+ (car at) -7.000000) (+ (cadr at) -16.000000)"), std::string::npos);
}

TEST_F(SmallCompanionsTest, TheDataWizardRefusesWhatIsNotThere) {
  const std::string program = machine.Install("Datrova.exe", machine.Folder());
  const std::string file = machine.InFolder("part.tmu");
  const auto run = [&] {
    auto process = platform::StartProgram({program, program + " " + file, machine.Folder()});
    if (!process) return std::string("not started");
    process->WaitUntilEndedPumpingMessages();
    const std::string record = machine.InFolder("Datrova.ini");
    const std::string number = platform::ReadProfileText(record, "Runs", "Count", "", 16);
    return platform::ReadProfileText(record, number, "Result", "", 64) + " " +
           platform::ReadProfileText(record, number, "Message", "", 1024);
  };
  EXPECT_EQ(run(), "Refused There is no file " + file);
  const std::string entries = "[Template]\r\nType=DXF\r\nTempDir=" + machine.Folder() +
                              "\\\r\n[Globals]\r\nVersion=2\r\n[Keywords]\r\nDXFfiles=" + file +
                              "\r\nUnits=mm\r\nPicture=";
  machine.WriteFile(file, entries + file + ".none\r\n");
  EXPECT_EQ(run(), "Refused Picture: there is no file \"" + file + ".none\"");
  machine.WriteFile(file, entries + file + "\r\n");
  EXPECT_EQ(run(), "Accepted ");
}

TEST_F(SmallCompanionsTest, SalvoraEndsByItself) {
  const std::string program = machine.Install("Salvora.exe", machine.Folder());
  auto process = platform::StartProgram({program, program, machine.Folder()});
  ASSERT_TRUE(process.has_value());
  process->WaitUntilEndedPumpingMessages();
}

}  // namespace
}  // namespace quillmar::test
