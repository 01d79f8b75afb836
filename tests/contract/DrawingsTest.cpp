// What the calculation host draws into files for the CAD: drawings, symbols, formats, models; and
// the exports that ask for one.

#include "Calculation.h"
#include "platform/Files.h"
#include "quillmar/CalculationHost.h"

namespace quillmar::contract {
namespace {

using testing::MatchesRegex;

constexpr int kDxf = 2;

LoginArguments WithModelFileKind(int kind) {
  LoginArguments arguments;
  arguments.modelFileKind = kind;
  return arguments;
}

// A temporary file's name does not say more than its folder, beginning and extension.
bool IsTempFile(const std::string& path, const std::string& extension) {
  const auto name = path.rfind('\\') + 1;
  return path.compare(name, 3, "HXD") == 0 && path.size() > extension.size() &&
         path.substr(path.size() - extension.size()) == extension && platform::FileExists(path);
}

class Drawings : public Calculation {
 protected:
  explicit Drawings(const LoginArguments& arguments = {}) : Calculation(arguments) {
    module.Set2dFileType(kDxf);
    ForgetCalls();
    host.Answer("24");
  }

  std::string Make(const char* typeOfPart) {
    Record record;
    Fill(record, typeOfPart);
    record.SetGlobal("Unit", "mm")
        .SetGlobal("Level", "4.5")
        .SetKeyWord("View", "Visibled", "1")
        .SetKeyWord("Position", "InfPoint", "1.5 -2.25")
        .SetParameter("xxScale", "0.5", "ND")
        .SetVersion(2, 0);
    Name(record.Id(), "drawn");
    return record.Id();
  }
};

// What the CAD gets for one kind. Words in brackets stand for what the protocol gives.
struct Kind {
  const char* typeOfPart;
  int fileType;
  const char* extension;
  const char* insert;
  const char* change;
  std::vector<std::string> arguments;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.insert << kind.typeOfPart; }

const std::vector<std::string> kModelArguments = {
    "[file]", "[id]", "[id]", "0", "<LIB>\\SHAFT 20x30.", "Shaft of test", "2", "[pairs]"};
const Kind kKinds[] = {
    {"1",
     2,
     ".dxf",
     "Insert2dPart",
     "Change2dPart",
     {"[file]", "[id]", "[id]", "1", "2", "[pairs]", "1.5", "-2.25", "4.5"}},
    {"13", 2, ".dxf", "InsertSymbol", "ChangeSymbol", {"[file]", "[id]", "[id]", "1", "SP"}},
    {"12", 2, ".dxf", "InsertFormat", "ChangeFormat", {"[file]", "[id]", "[id]", "1", "SP", "0.5"}},
    {"3", 7, ".c3d", "InsertPart", "ChangePart", kModelArguments},
    {"5", 8, ".c3p", "InsertPart", "ChangePart", kModelArguments},
    {"6", 8, ".c3p", "InsertPart", "ChangePart", kModelArguments},
};

class DrawnKinds : public Drawings, public testing::WithParamInterface<Kind> {
 protected:
  DrawnKinds() {
    module.Set2dFileType(GetParam().fileType);
    id = Make(GetParam().typeOfPart);
  }

  bool IsModel() const { return GetParam().insert == std::string("InsertPart"); }

  void ExpectHandedOver(const char* function) {
    std::vector<std::string> call = OnlyCall(function, 2);
    ASSERT_EQ(call.size(), GetParam().arguments.size());
    EXPECT_TRUE(IsTempFile(call[0], GetParam().extension)) << call[0];
    EXPECT_EQ(Record(id).KeyWord("Files", "Output"), call[0]);
    std::vector<std::string> expected = GetParam().arguments;
    for (std::string& text : expected) {
      if (text == "[file]") text = call[0];
      if (text == "[id]") text = id;
      if (text == "[pairs]") text = Pairs();
      if (text.back() == '.') text += "prt";
    }
    // A shared model has an identity of its own after a change.
    if (IsModel() && function == std::string(GetParam().change)) {
      EXPECT_NE(call[2], id);
      EXPECT_EQ(StateOf(call[2]), 0);
      expected[2] = call[2];
    }
    EXPECT_EQ(call, expected);
    const std::string type = std::to_string(GetParam().fileType);
    std::vector<std::string> commands = {"3()", "7()", R"(34("drawn"))",
                                         R"(24("drawn",)" + type + ")"};
    if (!IsModel()) commands.push_back(R"(34("drawn"))");
    EXPECT_EQ(HostSteps(), commands);
  }

  std::string id;
};

TEST_P(DrawnKinds, AreDrawnByTheHostAndHandedOver) {
  host.Finish(QM_CALLBACK_NEW_PART, id);
  ExpectHandedOver(GetParam().insert);
}

TEST_P(DrawnKinds, AreDrawnAnewAtAChange) {
  host.Finish(QM_CALLBACK_RECALCULATED, id);
  ExpectHandedOver(GetParam().change);
}

TEST_P(DrawnKinds, TheChangeStateDecidesWhatTheCadIsTold) {
  { Record(id).SetGlobal("Changed", "1"); }
  host.Finish(QM_CALLBACK_RECALCULATED, id);
  EXPECT_THAT(Steps(), ElementsAre("ConnectProtocol drawn @drawn"));
  { Record(id).SetGlobal("Changed", "2"); }
  ForgetCalls();
  host.Finish(QM_CALLBACK_RECALCULATED, id);
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_P(DrawnKinds, WithoutAFileThereIsNothingToInsert) {
  host.Answer("24", "0");
  host.Finish(QM_CALLBACK_NEW_PART, id);
  EXPECT_THAT(Steps(), IsEmpty());
  EXPECT_EQ(HostSteps().back(), R"(2("drawn"))");
  EXPECT_FALSE(platform::FileExists(Record(id).KeyWord("Files", "Output")));
}

INSTANTIATE_TEST_SUITE_P(All, DrawnKinds, testing::ValuesIn(kKinds));

TEST_F(Drawings, TheProtocolSaysHowToDraw) {
  const std::string id = Make("1");
  host.Finish(QM_CALLBACK_NEW_PART, id);
  const Record record(id);
  struct Row {
    const char* section;
    const char* keyword;
    std::string value;
  };
  for (const Row& row : {Row{"Position", "Origin", "0.0 0.0 0.0"},
                         {"LTParam", "StdScale", "1"},
                         {"LTParam", "UnitScale", "1"},
                         {"LTParam", "AxisElev", "100"},
                         {"LTParam", "UseSolids", "1"},
                         {"LTParam", "SolidRatio", "0"},
                         {"LTParam", "AxisLenght", "0"},
                         {"Files", "Layers", kModuleFolder + "\\Layers.ini"}}) {
    EXPECT_EQ(record.KeyWord(row.section, row.keyword), row.value) << row.keyword;
  }
  EXPECT_EQ(record.Parameter("xxht"), "3.5 nd");
  EXPECT_EQ(record.Parameter("xxangle"), "3.1415927 nd");
  EXPECT_EQ(record.Parameter("xxrightdir"), "1 nd");
  EXPECT_THAT(record.KeyWord("Cadx", "PartName"), MatchesRegex("PROFSP........"));
}

TEST_F(Drawings, TheUnitDecidesTheLengthOfAxesAndTheMetricFlag) {
  struct Row {
    const char* partUnit;
    const char* unit;
    const char* axis;
    const char* metric;
  };
  ASSERT_EQ(module.Set2dAxisOverlap(25.4), 1);
  for (const Row& row :
       {Row{"", "", "25.4", "0"}, Row{"", "mm", "25.4", "1"}, Row{"", "in", "1", "0"},
        Row{"IN", "mm", "1", "1"}, Row{"MM", "in", "25.4", "0"}, Row{"", "MM", "25.4", "0"}}) {
    SCOPED_TRACE(std::string(row.partUnit) + "/" + row.unit);
    const std::string id = Make("13");
    { Record(id).SetGlobal("PartUnit", row.partUnit).SetGlobal("Unit", row.unit); }
    ForgetCalls();
    host.Finish(QM_CALLBACK_NEW_PART, id);
    EXPECT_EQ(Record(id).KeyWord("LTParam", "AxisLenght"), row.axis);
    EXPECT_EQ(OnlyCall("InsertSymbol", 2).at(3), row.metric);
  }
}

TEST_F(Drawings, WhatTheProtocolSaysOfNameAndPlaceIsKept) {
  const std::string symbol = Make("13");
  { Record(symbol).SetGlobal("NamePrefix", "VAL").SetKeyWord("Cadx", "PartName", "P7"); }
  host.Finish(QM_CALLBACK_NEW_PART, symbol);
  EXPECT_EQ(OnlyCall("InsertSymbol", 2).at(4), "VAL");
  EXPECT_EQ(Record(symbol).KeyWord("Cadx", "PartName"), "P7");
  ForgetCalls();
  const std::string bare = Make("13");
  { Record(bare).SetGlobal("NamePrefix", ""); }
  host.Finish(QM_CALLBACK_NEW_PART, bare);
  EXPECT_EQ(OnlyCall("InsertSymbol", 2).at(4), "") << "an empty prefix is one";
  const std::string hidden = Make("1");
  { Record(hidden).SetKeyWord("View", "Visibled", "0").EraseKeyWord("Position", "InfPoint"); }
  host.Finish(QM_CALLBACK_NEW_PART, hidden);
  const std::vector<std::string> call = OnlyCall("Insert2dPart", 2);
  EXPECT_EQ(std::vector<std::string>(call.end() - 3, call.end()),
            (std::vector<std::string>{"0", "0", "0"}));
}

class NoDrawings : public Drawings {
 protected:
  NoDrawings() : Drawings(WithModelFileKind(0)) {}
};

TEST_F(NoDrawings, TheKindsAreHandedOverWithoutAFile) {
  for (const char* type : {"1", "13", "12", "3"}) {
    ForgetCalls();
    host.Finish(QM_CALLBACK_NEW_PART, Make(type));
    ASSERT_THAT(Calls(),
                testing::Contains(testing::Field(&JournalCall::arguments,
                                                 testing::Contains(testing::HasSubstr("@PID")))))
        << type;
    EXPECT_THAT(Steps(), SizeIs(1));
    for (const JournalCall& call : Calls()) {
      if (call.function.rfind("Insert", 0) == 0) {
        EXPECT_EQ(call.arguments[0], "") << call.function;
      }
    }
  }
  for (const std::string& call : host.Commands()) EXPECT_NE(call.rfind("24(", 0), 0u) << call;
}

// --- exports ---

struct Created {
  char id[260] = "?";
  std::string connection = std::string(70000, '?');
  int capacity = 70000;
  char file[260] = "?";
  int metric = -1;
  double x = -1, y = -1, level = -1;
  ExtDataPair* pairs = nullptr;
  int count = -1;
  const Exports* from = nullptr;

  Created() = default;
  Created(const Created&) = delete;
  Created& operator=(const Created&) = delete;
  ~Created() {
    if (from != nullptr) from->DeleteBomInfo(pairs, count);
  }

  int Call(const Exports& module, const char* source, int removeInfo = 0) {
    from = &module;
    return module.Create2dPart(source, id, connection.data(), &capacity, file, &metric, &x, &y,
                               &level, &pairs, &count, removeInfo);
  }
};

TEST_F(Drawings, ACopyIsDrawnForTheAddIn) {
  const std::string id = Make("1");
  {
    Record(id)
        .SetKeyWord("Object", "ProtID", id)
        .SetKeyWord("LinkFrom", "a", "b")
        .SetKeyWord("LinkTo", "a", "b")
        .SetKeyWord("LinksFrom", "a", "b")
        .SetKeyWord("LinksTo", "a", "b");
  }
  Created created;
  ASSERT_EQ(created.Call(module, id.c_str(), 1), 1);
  const std::string copy = created.id;
  EXPECT_NE(copy, id);
  const std::string connection = created.connection.c_str();
  EXPECT_EQ(connection.substr(0, copy.size() + 6), copy + "<@PID>");
  EXPECT_EQ(created.capacity, static_cast<int>(connection.size()));
  EXPECT_TRUE(IsTempFile(created.file, ".dxf")) << created.file;
  EXPECT_EQ(created.metric, 1);
  EXPECT_EQ(created.x, 1.5);
  EXPECT_EQ(created.y, -2.25);
  EXPECT_EQ(created.level, 4.5);
  ASSERT_EQ(created.count, 2);
  EXPECT_STREQ(created.pairs[1].name, "Size");
  EXPECT_STREQ(created.pairs[1].value, "20x30");
  EXPECT_THAT(host.Commands(), ElementsAre("34(\"" + copy + "\")", "24(\"" + copy + "\",2)"));
  EXPECT_THAT(Steps(), IsEmpty()) << "the add-in inserts it";
  ASSERT_EQ(StateOf(copy), 2);
  const Record record(copy);
  for (const char* section : {"LinkFrom", "LinkTo", "LinksFrom", "LinksTo"}) {
    EXPECT_EQ(record.KeyWord(section, "a"), kMissing) << section;
  }
  EXPECT_EQ(record.Global("ReallyRemoveInfo"), "1");
  EXPECT_EQ(record.Parameter("d"), "20 mm");
  EXPECT_EQ(Record(id).Global("ReallyRemoveInfo"), kMissing);
  EXPECT_EQ(Record(id).KeyWord("Files", "Output"), kMissing);
}

TEST_F(Drawings, WhatCannotBeDrawnOrHandedOverLeavesNothing) {
  const auto expectNothing = [&](Created& created, const char* source) {
    host.Forget();
    host.Answer("24", source == nullptr ? "1" : "0");
    EXPECT_EQ(created.Call(module, source), 0);
    EXPECT_STREQ(created.id, "");
    EXPECT_STREQ(created.file, "");
    EXPECT_EQ(created.pairs, nullptr);
    EXPECT_EQ(created.count, 0);
  };
  const std::string id = Make("1");
  Created refused;
  expectNothing(refused, id.c_str());
  ASSERT_THAT(host.Commands(), SizeIs(2));
  const std::string copy = host.Commands()[0].substr(4, host.Commands()[0].size() - 6);
  EXPECT_EQ(StateOf(copy), 0) << copy;
  Created unknown;
  expectNothing(unknown, "NOWHERE");
  EXPECT_EQ(StateOf("NOWHERE"), 0);
  expectNothing(unknown, nullptr);

  host.Answer("24", "1");
  host.Forget();
  host.Answer("24", "1");
  Created narrow;
  narrow.capacity = 20;
  EXPECT_EQ(narrow.Call(module, id.c_str()), 0);
  EXPECT_STREQ(narrow.connection.c_str(), "");
  EXPECT_EQ(narrow.connection[20], '?');
  Created fitting;
  fitting.capacity = narrow.capacity;
  EXPECT_EQ(fitting.Call(module, id.c_str()), 1);
  EXPECT_EQ(fitting.capacity, narrow.capacity - 1) << "the length, without the NUL";
  EXPECT_EQ(module.Create2dPart(id.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, 0),
            1);
}

TEST_F(Drawings, PicturesAreDrawnByTheHost) {
  const std::string id = Make("1");
  char path[260];
  ASSERT_EQ(module.MakePicture(id.c_str(), path), 1);
  EXPECT_TRUE(IsTempFile(path, ".WMF")) << path;
  EXPECT_EQ(Record(id).KeyWord("Files", "Output"), path);
  EXPECT_THAT(HostSteps(), ElementsAre(R"(24("drawn",2))"));
  host.Answer("24", "0");
  EXPECT_EQ(module.MakePicture(id.c_str(), path), 0);
  EXPECT_STREQ(path, "");
  EXPECT_FALSE(platform::FileExists(Record(id).KeyWord("Files", "Output")));
  EXPECT_EQ(module.MakePicture("NOWHERE", path), 0);
  EXPECT_EQ(StateOf("NOWHERE"), 0);
}

TEST_F(Drawings, FormatsAreShownByTheHost) {
  host.Answer("2", "7");
  EXPECT_EQ(module.ShowFormat("DIN", 0.25), 7);
  ASSERT_THAT(host.Commands(), SizeIs(1));
  const std::string shown = host.Commands()[0];
  const std::string id = shown.substr(3, shown.size() - 5);
  ASSERT_EQ(StateOf(id), 2) << shown;
  const Record record(id);
  EXPECT_EQ(record.Global("Standard"), "DIN");
  EXPECT_EQ(record.Global("PrfStd"), "DIN");
  EXPECT_EQ(record.Global("Language"), "NO");
  EXPECT_EQ(record.Global("TypeOfPart"), "12");
  EXPECT_EQ(record.KeyWord("Main", "DataFile"), "Symbols|xformats");
  EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "1");
  EXPECT_EQ(record.Parameter("xxScale"), "0.25 ND");
}

TEST_F(Drawings, TheUnitOfAProtocolIsTold) {
  const std::string id = Make("1");
  int metric = -1;
  EXPECT_EQ(module.IsPartMetrics(id.c_str(), &metric), 1);
  EXPECT_EQ(metric, 1);
  { Record(id).SetGlobal("Unit", "in"); }
  EXPECT_EQ(module.IsPartMetrics(id.c_str(), &metric), 0);
  EXPECT_EQ(metric, 0);
  metric = -1;
  EXPECT_EQ(module.IsPartMetrics("NOWHERE", &metric), 0);
  EXPECT_EQ(metric, 0);
  EXPECT_EQ(StateOf("NOWHERE"), 0);
}

}  // namespace
}  // namespace quillmar::contract
