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

}  // namespace
}  // namespace quillmar::contract
