// Texts that the CAD stores with a part: one for each tag of the user's options.
#include "PartsWorld.h"
#include "naming/NameTemplate.h"
#include "parts/ExtendedData.h"

namespace quillmar::test {
namespace {

class ExtendedDataTest : public PartsWorld {
 protected:
  std::string Value(const std::string& templateText, const std::vector<Entry>& entries) {
    SetOption("OptBom", "User_T", templateText);
    RereadOptions();
    VXProtocol protocol(protocols, MakeProtocol("p", entries));
    const ExtDataPairs pairs = BuildExtendedData(services, protocol);
    return pairs.Count() == 1 ? pairs.Get()[0].value : "(no pair)";
  }
};

TEST_F(ExtendedDataTest, FieldsOfATemplate) {
  const std::vector<Entry> fields = {
      {"Globals", "Bom1", "one"},        {"Globals", "BOM1User", "mine"},
      {"Globals", "Bom2", "two"},        {"Globals", "Bom12", "twelve"},
      {"Globals", "BOM12User", "my12"},  {"Globals", "Bom13", "thirteen"},
      {"Data", "VXP_ED_BOM12", "fixed"}, {"Data", "VXP_ED_BOM2", "not for the first three"},
      {"Globals", "Model", "GEAR"}};
  struct Row {
    const char* text;
    const char* value;
  };
  for (const Row& row :
       {Row{"plain", "plain"}, Row{"%BOM1%/%BOM2%/%BOM1%", "mine/two/mine"},
        Row{"%BOM12%-%BOM13%-%BOM14%", "fixed-thirteen-"}, Row{"%BOM3%%ModelName%", "GEAR"},
        Row{"%BOM", "%BOM"}, Row{"%BOMx%", ""}, Row{"%BOM012% %BOM12%", " fixed"}}) {
    EXPECT_EQ(Value(row.text, fields), row.value) << row.text;
  }
  SetOption("OptBom", "MakeUpperCase", 1u);
  EXPECT_EQ(Value("%BOM1% a", fields), "MINE A");
}

TEST_F(ExtendedDataTest, FieldsThatBringThemselvesEnd) {
  const std::string value = Value("%BOM7%", {{"Globals", "Bom7", "x%BOM7%"}});
  EXPECT_LE(value.size(), 3u * kMaxNestedValues);
  EXPECT_EQ(value.substr(0, 3), "xxx");
  EXPECT_LE(Value("%BOM7%", {{"Globals", "Bom7", " %BOM7%%BOM7%"}}).size(), 2 * kMaxNestedLength);
}

TEST_F(ExtendedDataTest, NamesOfTheCad) {
  SetOption("OptBom", "User_Size", std::string("s"));
  SetOption("OptBom", "User_Mass", std::string("m"));
  RereadOptions();
  VXProtocol protocol(protocols, MakeProtocol("p", {}));
  const auto names = [&] {
    std::vector<std::string> found;
    const ExtDataPairs pairs = BuildExtendedData(services, protocol);
    for (int i = 0; i < pairs.Count(); ++i) {
      found.push_back(std::string(pairs.Get()[i].name) + "=" + pairs.Get()[i].value);
    }
    return found;
  };
  EXPECT_THAT(names(), testing::UnorderedElementsAre("Size=s", "Mass=m"));
  tags.SetDefaultUserSection("Custom");
  EXPECT_THAT(names(), testing::UnorderedElementsAre("Size=s", "Mass=m"));
  tags.AddBomTag("Summary", "Weight", "Mass");
  EXPECT_THAT(names(), testing::UnorderedElementsAre("Custom\\Size=s", "Summary\\Weight=m"));
}

TEST_F(ExtendedDataTest, ReachesTheCadWithThePart) {
  SetOption("OptBom", "User_Mass", std::string("%Mass%"));
  RereadOptions();
  const std::string part = MakeProtocol("p", {{"Globals", "TypeOfPart", "9"},
                                              {"Cadx", "ReallySmartPart", "0"},
                                              {"Main", "DataFile", "KEELDATA|SHAFT"},
                                              {"Globals", "Changed", "0"}});
  EXPECT_TRUE(Update(part));
  EXPECT_THAT(CadCalls().front(), testing::EndsWith("|1"));
}

}  // namespace
}  // namespace quillmar::test
