// StartCalculation: the new protocol's contents and the host's call.
#include "Contract.h"

namespace quillmar::contract {
namespace {

class StartCalculation : public Contract {
 protected:
  StartCalculation() { StartSession(); }

  // The protocol whose calculation the host was asked to show, last of all.
  std::string ShownProtocol() {
    const std::vector<std::string> commands = host.Commands();
    if (commands.empty() || commands.back().rfind("2(\"", 0) != 0) return {};
    return commands.back().substr(3, commands.back().size() - 5);
  }
};

TEST_F(StartCalculation, MakesAProtocolAndLetsTheHostShowIt) {
  module.StartCalculation("shaft", "ISO");
  ASSERT_THAT(host.Commands(), SizeIs(1));
  const std::string id = ShownProtocol();
  ASSERT_EQ(StateOf(id), 2) << "closed, so that the host can open it";
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Main", "DataFile"), "KEELDATA|SHAFT");
  EXPECT_EQ(record.Global("Standard"), "ISO");
  EXPECT_EQ(record.Global("FirstRun"), "1");
  EXPECT_EQ(record.Global("Language"), "CZ");
  EXPECT_EQ(record.KeyWord("Cadx", "Recalc"), "1");
  EXPECT_THAT(CalledFunctions(), testing::Each("GetMainHwnd"));
}

TEST_F(StartCalculation, EachCallMakesItsOwnProtocol) {
  module.StartCalculation("shaft", "ISO");
  const std::string first = ShownProtocol();
  module.StartCalculation("shaft", "ISO");
  EXPECT_NE(ShownProtocol(), first);
  EXPECT_EQ(StateOf(first), 2);
}

TEST_F(StartCalculation, TextsThatAreMissingOddOrLong) {
  const std::string lengthy(5000, 'y');
  struct Case {
    const char* dataFile;
    const char* standard;
    std::string expectedFile;
    std::string expectedStandard;
  };
  for (const Case& texts : {
           Case{nullptr, nullptr, "KEELDATA|", ""},
           Case{"", "", "KEELDATA|", ""},
           // Casing follows the code page.
           Case{"h\xF8\xED"
                "del",
                "\xE8sn",
                "KEELDATA|H\xD8\xCD"
                "DEL",
                "\xE8sn"},
           Case{"a|b;c<@EL>", "x,y\n", "KEELDATA|A|B;C<@EL>", "x,y\n"},
           Case{lengthy.c_str(), lengthy.c_str(), "KEELDATA|" + std::string(5000, 'Y'), lengthy},
       }) {
    SCOPED_TRACE(texts.expectedFile.substr(0, 40));
    module.StartCalculation(texts.dataFile, texts.standard);
    const Record record(ShownProtocol());
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), texts.expectedFile);
    EXPECT_EQ(record.Global("Standard"), texts.expectedStandard);
  }
}

// --- bolted connections ---

TEST_F(StartCalculation, ABoltedConnectionTakesTheStandardThatWasUsedLast) {
  const std::string calculation = kModuleKey + "\\VxcVTL\\Calcs\\BOLTCON";
  const std::string options = kModuleKey + "\\OptKC";
  const std::string suite = kModuleKey + "\\Fendrake";
  const auto forget = [&] {
    for (const Hive hive : {Hive::CurrentUser, Hive::LocalMachine}) {
      for (const std::string& key : {calculation, options, suite}) ClearKey(hive, key);
    }
  };
  struct Stored {
    Hive hive;
    const std::string& key;
    const char* name;
    const char* text;
  };
  const struct {
    std::vector<Stored> stored;
    const char* standard;
  } cases[] = {
      {{}, "ANS"},
      {{{Hive::LocalMachine, suite, "LastStandard", "  DIN "}}, "DIN"},
      {{{Hive::LocalMachine, suite, "LastStandard", "DIN"},
        {Hive::CurrentUser, suite, "LastStandard", "GB"}},
       "GB"},
      {{{Hive::CurrentUser, suite, "LastStandard", "DIN"},
        {Hive::LocalMachine, options, "LastSelStdAsStr", "JIS"}},
       "JIS"},
      {{{Hive::CurrentUser, options, "LastSelStdAsStr", "JIS"},
        {Hive::LocalMachine, calculation, "Standard", "ISO 4014"}},
       "ISO 4014"},
      // The first that can be read counts, whatever it holds.
      {{{Hive::CurrentUser, options, "LastSelStdAsStr", "JIS"},
        {Hive::CurrentUser, calculation, "Standard", " \t"}},
       "ANS"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.standard);
    forget();
    for (const Stored& value : each.stored) SetText(value.hive, value.key, value.name, value.text);
    EXPECT_EQ(module.StartNewBC(), 1);
    const Record record(ShownProtocol());
    EXPECT_EQ(record.Global("Standard"), each.standard);
    EXPECT_EQ(record.Global("Language"), "CZ");
    EXPECT_EQ(record.Global("FirstRun"), kMissing);
    EXPECT_EQ(record.KeyWord("Cadx", "Recalc"), "5");
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), "KEELDATA|THRJOIN");
  }
}

TEST_F(StartCalculation, ARecalculatedConnectionGoesToItsLibrary) {
  std::string id;
  std::string reference;
  {
    Record record;
    record.SetKeyWord("Main", "DataFile", "KEELDATA|THRJOIN");
    id = record.Id();
    reference = record.Reference();
  }
  Erase(id);
  strict::Core().Strict_SetAnswer("EditBoltedConnection2", "9");
  EXPECT_EQ(module.MCWRecalculate(reference.c_str(), 1, 20, -30), kStrictCompanions ? 9 : 1);
  EXPECT_EQ(StateOf(id), 2) << "made anew from the text, and closed";
  if (kStrictCompanions) {
    ASSERT_THAT(Calls("EditBoltedConnection2"), SizeIs(1));
    EXPECT_THAT(Calls("EditBoltedConnection2")[0].arguments, ElementsAre(id, "20", "-30"));
  }
  EXPECT_EQ(module.MCWRecalculate("no marker", 1, 2, 3), 0);
}

// --- the group manager's optimisation ---

TEST_F(StartCalculation, TheOptimizerFindsItsFlags) {
  std::string id;
  { id = Record().Id(); }
  EXPECT_EQ(module.CallOptimGM(id.c_str()), 1);
  EXPECT_EQ(ShownProtocol(), id);
  ASSERT_EQ(StateOf(id), 2);
  {
    const Record record(id);
    EXPECT_EQ(record.KeyWord("Cadx", "id"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "update"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "0");
    EXPECT_EQ(record.KeyWord("Cadx", "optim"), "4");
  }
  host.Forget();
  EXPECT_EQ(module.CallOptimGM(std::string(300, 'x').c_str()), 0);
  EXPECT_THAT(host.Commands(), IsEmpty());
}

}  // namespace
}  // namespace quillmar::contract
