// Options, captions, bill-of-materials tags, units and extended data through the exports.
#include <cstdlib>
#include <cstring>
#include <optional>

#include "Calculation.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

// Folder of the add-in: under this name its options are found again after login.
const std::string kAddInOptions = kModuleKey + "\\Strictcad\\OptBom";
constexpr const char* kUntouched = "untouched";

struct Texts {
  int result = 0;
  std::string tags;
  std::string values;
};

class Options : public Calculation {
 protected:
  Options() { ClearKey(Hive::CurrentUser, kAddInOptions); }

  Texts NameOf(const char* protocolId) {
    char tags[4096] = "untouched";
    char values[4096] = "untouched";
    const int result = module.CreateFileName(protocolId, tags, values);
    return {result, tags, values};
  }

  // Tags and values of a part with one tag of this text.
  std::string ValueOf(const std::string& id, const std::string& text) {
    ClearKey(Hive::CurrentUser, kAddInOptions);
    SetText(Hive::CurrentUser, kAddInOptions, "TitleExt", "c");
    SetText(Hive::CurrentUser, kAddInOptions, "User_T", text);
    const Texts texts = NameOf(id.c_str());
    EXPECT_EQ(texts.tags, "$T\t");
    return texts.values.size() < 3 ? texts.values : texts.values.substr(2, texts.values.size() - 3);
  }
};

TEST_F(Options, CaptionAndTagsFollowTheApplicationThatLoggedInLast) {
  const std::string id = Calculated(kShaft);
  SetText(Hive::CurrentUser, kAddInOptions, "TitleExt", "<%CBFName%> a b");
  SetText(Hive::CurrentUser, kAddInOptions, "User_T1", "V1");
  SetText(Hive::CurrentUser, kAddInOptions, "uSER_T2", "%note%-%none%");
  const auto texts = NameOf(id.c_str());
  EXPECT_EQ(texts.result, 1);
  EXPECT_EQ(texts.tags, "$T1\t$T2\t");
  EXPECT_EQ(texts.values, "<SHAFT> a b\tV1\ta,b-\t");

  SetNumber(Hive::CurrentUser, kAddInOptions, "MakeUpperCase", 1);
  SetNumber(Hive::CurrentUser, kAddInOptions, "ReplaceSpaces", 2);
  EXPECT_EQ(NameOf(id.c_str()).values, "<SHAFT>_A_B\tV1\tA,B-\t");
  SetNumber(Hive::CurrentUser, kAddInOptions, "ReplaceSpaces", 1);
  EXPECT_EQ(NameOf(id.c_str()).values, "<SHAFT>AB\tV1\tA,B-\t");
  ClearKey(Hive::CurrentUser, kAddInOptions);
  EXPECT_EQ(NameOf(id.c_str()).tags, "") << "the tags before were another application's";
  EXPECT_EQ(NameOf(id.c_str()).values, Caption() + "\t");
}

TEST_F(Options, WithoutAPartNothingIsWritten) {
  Record typeless;
  Fill(typeless, "11");
  typeless.Abandon();
  for (const char* id :
       {typeless.Id().c_str(), "no such protocol", "", static_cast<const char*>(nullptr)}) {
    const auto texts = NameOf(id);
    EXPECT_EQ(texts.result, 0);
    EXPECT_EQ(texts.tags, kUntouched);
    EXPECT_EQ(texts.values, kUntouched);
  }
}

TEST_F(Options, FieldsOfTemplates) {
  const std::string id = Calculated(kShaft);
  {
    Record record(id);
    record.SetGlobal("BOM1User", "mine")
        .SetGlobal("Bom1", "one")
        .SetGlobal("Bom12", "x%BOM12%")
        .SetGlobal("Bom13", "thirteen")
        .SetParameter("VXP_ED_BOM13", "fixed", "")
        .SetGlobal("Ring", "%Ring%");
  }
  struct Row {
    const char* text;
    std::string value;
  };
  for (const Row& row : {Row{"%BOM1%/%BOM2%", "mine/20x30"}, Row{"%BOM13%-%BOM14%", "fixed-"},
                         Row{"100%", "100%"}, Row{"%d% %", "20 %"}, Row{"%Ring%", "%Ring%"}}) {
    EXPECT_EQ(ValueOf(id, row.text), row.value) << row.text;
  }
  EXPECT_THAT(ValueOf(id, "%BOM12%"), testing::StartsWith("xxx")) << "and ends";
}

TEST_F(Options, RegisteredTagsNameTheEntriesInTheCad) {
  const std::string id = Calculated(kShaft);
  SetText(Hive::CurrentUser, kAddInOptions, "User_Mass", "m");
  SetText(Hive::CurrentUser, kAddInOptions, "User_Size", "s");
  EXPECT_EQ(module.SetDefaultUserBTSection("Custom"), 1);
  EXPECT_EQ(NameOf(id.c_str()).tags, "$Mass\t$Size\t");
  EXPECT_EQ(module.AddBomTag("Summary", "Weight", "Mass"), 1);
  EXPECT_EQ(NameOf(id.c_str()).tags, "$Summary\\Weight\t$Custom\\Size\t");
  EXPECT_EQ(module.AddBomTag("Project", "Mass", "Mass"), 1);
  EXPECT_EQ(module.SetDefaultUserBTSection(nullptr), 1);
  EXPECT_EQ(NameOf(id.c_str()).tags, "$Project\\Mass\t$\\Size\t");
}

TEST_F(Options, AnyUserTextHidesTheMachinesTags) {
  const std::string id = Calculated(kShaft);
  ClearKey(Hive::LocalMachine, kAddInOptions);
  SetText(Hive::LocalMachine, kAddInOptions, "User_Mass", "%Mass%");
  SetNumber(Hive::CurrentUser, kAddInOptions, "MakeUpperCase", 0);
  EXPECT_EQ(NameOf(id.c_str()).tags, "$Mass\t");
  SetText(Hive::CurrentUser, kAddInOptions, "TitleExt", "x");
  EXPECT_EQ(NameOf(id.c_str()).tags, "");
  ClearKey(Hive::LocalMachine, kAddInOptions);
}

TEST_F(Options, PairsAreFreed) {
  auto* pairs = static_cast<ExtDataPair*>(std::calloc(2, sizeof(ExtDataPair)));
  for (char** text : {&pairs[0].name, &pairs[0].value, &pairs[1].name}) {
    *text = static_cast<char*>(std::malloc(8));
    std::strcpy(*text, "text");
  }
  EXPECT_EQ(module.DeleteBomInfo(pairs, 2), 1);
  EXPECT_EQ(module.DeleteBomInfo(nullptr, 3), 1);
}

TEST_F(Options, UnitsComeInTwoSteps) {
  const std::string id = Calculated(kShaft);
  std::string wanted = "*view*,ISO";
  {
    const Record record(id);
    for (const auto& [name, value] : record.Parameters()) {
      if (name.rfind("VXP_", 0) == 0) continue;
      const std::string both = record.Parameter(name.c_str());
      const auto blank = both.rfind(' ');
      wanted += "," + name + "," + both.substr(blank + 1);
    }
  }
  const int length = static_cast<int>(wanted.size());
  for (const int room : {0, -1, length - 1}) {
    char text[256] = "untouched";
    int size = room;
    EXPECT_EQ(module.GetUnitList(id.c_str(), text, &size), 0) << room;
    EXPECT_STREQ(text, kUntouched);
    EXPECT_EQ(size, length);
    EXPECT_EQ(module.GetUnitList(id.c_str(), text, &size), 1);
    EXPECT_EQ(text, wanted);
  }
  int size = 255;
  char text[256] = "";
  EXPECT_EQ(module.GetUnitList(id.c_str(), nullptr, &size), 0);
  EXPECT_EQ(size, length);
  EXPECT_EQ(module.GetUnitList(id.c_str(), text, nullptr), 0);
  EXPECT_EQ(module.GetUnitList("no such list", text, &size), 0);
  EXPECT_EQ(StateOf(id), 2) << "closed again";
}

class ExtendedData : public Options {
 protected:
  ExtendedData() {
    for (const auto& [type, name] : {std::pair{"1", &drawing}, {kShaft, &shaft}}) {
      Record record;
      Fill(record, type);
      *name = record.Id();
      list += record.Reference() + "<@NEXT_PROT>";
    }
    Erase(shaft);
    Erase(drawing);
    strict::Core().Strict_SetAnswer("GetAllParts.text", list.c_str());
    ForgetCalls();
  }

  void ExpectRefresh() {
    EXPECT_THAT(host.Commands(), ElementsAre(HasSubstr("52(\"" + shaft + "\""))) << "parts alone";
    const std::vector<std::string> changed = OnlyCall("ChangeShaft", 3);
    ASSERT_FALSE(changed.empty());
    EXPECT_EQ(changed.back().empty(), false);
    for (const std::string& id : {shaft, drawing}) EXPECT_EQ(StateOf(id), 0) << id;
  }

  std::string shaft;
  std::string drawing;
  std::string list;
};

TEST_F(ExtendedData, IsWrittenAgainForAllParts) {
  EXPECT_EQ(module.UpdateExtendedData(), 1);
  ExpectRefresh();
}

TEST_F(ExtendedData, IsWrittenWhenTheQueueComesToIt) {
  EXPECT_EQ(module.CallUTFunction(4002), 1);
  EXPECT_THAT(Calls("ChangeShaft"), IsEmpty());
  platform::PumpMessages();
  ExpectRefresh();
}

TEST_F(ExtendedData, NeedsTheListOfParts) {
  strict::Core().Strict_SetAnswer("GetAllParts", "0");
  EXPECT_EQ(module.UpdateExtendedData(), 0);
  EXPECT_THAT(host.Commands(), IsEmpty());
}

}  // namespace
}  // namespace quillmar::contract
