// What the user and a debugger are shown, and the host that never becomes ready: on the target
// where the clock can be set and boxes need nobody to close them.
#include "Calculation.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "platform/native/Machine.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

std::vector<std::string> ShownTexts() {
  std::vector<std::string> texts;
  for (const platform::ShownDialog& dialog : platform::Machine::Current().Shown()) {
    texts.push_back(dialog.text);
  }
  return texts;
}

class Messages : public Contract {};

TEST_F(Messages, AMissingStorageLibraryRefusesTheLoad) {
  ASSERT_TRUE(platform::RemoveFile(kSuiteFolder + "\\Keelcomm.dll"));
  EXPECT_FALSE(LoadModule());
  ASSERT_THAT(ShownTexts(), SizeIs(1));
  EXPECT_THAT(ShownTexts()[0],
              testing::AllOf(testing::StartsWith("Can't load library Keelcomm.dll\n\n"
                                                 "GetLastError returned: "),
                             testing::EndsWith("\n_GetVardaFendrakePath = " + kSuiteFolder)));
}

TEST_F(Messages, AMissingLinkLibraryRefusesTheLoad) {
  ASSERT_TRUE(platform::RemoveFile(kSuiteFolder + "\\Keellink.dll"));
  EXPECT_FALSE(LoadModule());
  EXPECT_THAT(ShownTexts(), ElementsAre("Can't load library Keellink.dll"));
}

// The box over a missing library has the module's title.
TEST_F(Messages, TheTitleIsOfTheMachinesLanguageAndTheHostsKind) {
  const std::string texts = kModuleFolder + "\\Quillmar.lng";
  for (const auto& [number, language, text] : {std::tuple{"63", "EN", "Title"},
                                               {"63", "DE", "Titel"},
                                               {"72", "EN", "Tables"},
                                               {"72", "DE", "Tabellen"}}) {
    ASSERT_TRUE(platform::WriteProfileText(texts, number, language, text));
  }
  ASSERT_TRUE(platform::RemoveFile(kSuiteFolder + "\\Keelcomm.dll"));
  SetText(Hive::CurrentUser, kModuleKey, "Language", "DE");  // means nothing there
  const struct {
    const char* language;
    const char* kind;
    const char* title;
  } cases[] = {{nullptr, nullptr, "Title"},     {"", "0", "Title"},      {"EN", "2", "Title"},
               {"EN", "1", "Tables"},           {"DE", "1", "Tabellen"}, {"DE", "-1", "Titel"},
               {"FR", "x", "Message not found"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.title);
    RemoveValue(Hive::LocalMachine, kModuleKey, "Language");
    if (each.language) SetText(Hive::LocalMachine, kModuleKey, "Language", each.language);
    platform::WriteProfileText(kSuiteFolder + "\\Hexaplan.ini", "General", "UTType", each.kind);
    EXPECT_FALSE(LoadModule());
    EXPECT_EQ(platform::Machine::Current().Shown().back().title, each.title);
  }
  RemoveValue(Hive::LocalMachine, kModuleKey, "Language");
  SetNumber(Hive::LocalMachine, kModuleKey, "Language", 1);
  EXPECT_FALSE(LoadModule());
  EXPECT_EQ(platform::Machine::Current().Shown().back().title, "Title") << "a number names none";
}

TEST_F(Messages, AHostThatIsNeverReadyGetsNoSessionData) {
  platform::Machine::Current().SetClock(1000);
  host = HostSide::Start();
  host.Answer("16", "0");
  ASSERT_TRUE(LoadModule());
  LoadCad();
  EXPECT_EQ(Login(), 1);
  EXPECT_THAT(host.Calls(), ElementsAre("30(17)")) << "the connection itself stays";
  EXPECT_THAT(ShownTexts(), IsEmpty());

  // Later calls ask again, for as long, and are made all the same.
  host.Answer("2", "7");
  const std::uint32_t before = platform::TickCount();
  EXPECT_EQ(module.ShowDialogUT("P1"), 7);
  EXPECT_GE(platform::TickCount() - before, 11000u);
  EXPECT_THAT(host.Calls(), ElementsAre("30(17)", R"(2("P1"))"));
  // Once it is ready it is told what it has missed.
  host.Forget();
  EXPECT_EQ(module.ShowDialogUT("P1"), 0);
  EXPECT_THAT(host.Commands(), ElementsAre(R"(2("P1"))"));
  EXPECT_THAT(host.Calls(), SizeIs(testing::Gt(3u)));
}

TEST_F(Messages, AnErrorThatTheHostRaisesIsShown) {
  StartSession();
  host.Answer("raise 2", "No licence for \xE8\xE1st");
  EXPECT_EQ(module.ShowDialogUT("P1"), 0);
  EXPECT_THAT(ShownTexts(), ElementsAre("No licence for \xE8\xE1st"));
  EXPECT_TRUE(HostSide::Runs());
}

class Trace : public Calculation {};

TEST_F(Trace, FailuresAreReportedInOrderWhenTracingIsOn) {
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
  strict::Core().Strict_SetAnswer("InsertParamPart", "0");
  platform::Machine::Current().DebugLines().clear();
  host.Finish(QM_CALLBACK_NEW_PART, Calculated(kParametricPart));
  std::vector<std::string> messages;
  for (const std::string& line : platform::Machine::Current().DebugLines()) {
    messages.push_back(line.substr(0, line.find('\n')));
  }
  // Reads of what the protocol does not hold are reported as well.
  std::erase_if(messages, [](const std::string& message) {
    return message.rfind("Cannot read", 0) == 0 || message.rfind("Cannot erase", 0) == 0;
  });
  ASSERT_THAT(messages, SizeIs(testing::Ge(3u)));
  EXPECT_EQ(messages[0], "Cannot insert parameter part");
  EXPECT_EQ(messages[1], "Cannot insert part into cad system.");
  EXPECT_THAT(messages[2], testing::StartsWith("Cannot insert part"));
}

TEST_F(Trace, WhatIsNoOptionsPageIsReported) {
  platform::WriteProfileText("Afx.ini", "Diagnostics", "TraceEnabled", "1");
  const QmOptionsPage nobodys{};
  const QmOptionsPage* pages[] = {&nobodys, nullptr, reinterpret_cast<const QmOptionsPage*>(16)};
  platform::Machine::Current().DebugLines().clear();
  EXPECT_EQ(module.SetOptions(pages, 3, "Sheet", "", 0), 0);
  EXPECT_THAT(platform::Machine::Current().DebugLines(),
              ElementsAre(testing::StartsWith("Options page 0 is not a page\n"),
                          testing::StartsWith("Options page 1 is not a page\n"),
                          testing::StartsWith("Options page 2 is not a page\n")));
}

}  // namespace
}  // namespace quillmar::contract
