// Questions about protocols, copies of protocols and new ones.
#include <functional>

#include "Calculation.h"

namespace quillmar::contract {
namespace {

using Edit = std::function<void(Record&)>;

// An answer as wide as any of the outputs.
constexpr std::size_t kRoom = 65536;

class ProtocolQueries : public Calculation {
 protected:
  // Reference text of a protocol that is not stored.
  static std::string Unstored(const Edit& edit) {
    std::string id;
    std::string reference;
    {
      Record record;
      edit(record);
      id = record.Id();
      reference = record.Reference();
    }
    Erase(id);
    return reference;
  }
  static std::string Stored(const Edit& edit) {
    Record record;
    edit(record);
    return record.Id();
  }

  // What a query leaves behind in the store; the suite's store cannot be counted.
  static int Count() { return kStrictCompanions ? strict::Core().Strict_StoredProtocols() : 0; }
};

TEST_F(ProtocolQueries, SmartPartsAreToldByThreeRules) {
  struct Row {
    const char* really;
    const char* smart;
    bool userChooses;
    int expected;
  };
  for (const Row& row :
       {Row{"1", "0", true, 1}, Row{"0", "1", false, 0}, Row{nullptr, "0", false, 1},
        Row{nullptr, "1", true, 1}, Row{nullptr, nullptr, true, 0}}) {
    SetNumber(Hive::CurrentUser, kModuleKey + "\\OptGeneral", "Show2", row.userChooses ? 1 : 0);
    UnloadModule();  // the options are read when the library is loaded
    ASSERT_TRUE(LoadModule());
    ASSERT_EQ(Login(), 1);
    std::string id;
    const std::string reference = Unstored([&](Record& record) {
      id = record.Id();
      if (row.really) record.SetKeyWord("Cadx", "ReallySmartPart", row.really);
      if (row.smart) record.SetKeyWord("Cadx", "SmartPart", row.smart);
    });
    const int before = Count();
    EXPECT_EQ(module.IsSmartPart(reference.c_str()), row.expected) << row.expected;
    EXPECT_EQ(StateOf(id), 0);
    EXPECT_EQ(Count(), before);
  }
  for (const char* odd : {"", "no marker", "<@PID>a<@EL>"}) EXPECT_EQ(module.IsSmartPart(odd), 0);
}

TEST_F(ProtocolQueries, AQuestionLeavesNoWorkingCopy) {
  std::string reference;
  const std::string id = Stored([&](Record& record) {
    record.SetKeyWord("Cadx", "ReallySmartPart", "1");
    reference = record.Reference();
  });
  EXPECT_EQ(module.IsSmartPart(reference.c_str()), 1);
  EXPECT_EQ(StateOf(id), 0);
}

TEST_F(ProtocolQueries, FeaturesAreToldByTheirType) {
  constexpr int kUntouched = 77;
  const struct {
    const char* type;
    int result;
    int positive;
  } rows[] = {{"5", 1, 1}, {"6", 1, 0},          {"7", 1, 1},
              {"8", 1, 0}, {"1", 0, kUntouched}, {"14", 0, kUntouched}};
  for (const auto& row : rows) {
    const std::string id = Stored([&](Record& r) { r.SetGlobal("TypeOfPart", row.type); });
    int positive = kUntouched;
    EXPECT_EQ(module.IsFeaturePositive(id.c_str(), &positive), row.result) << row.type;
    EXPECT_EQ(positive, row.positive) << row.type;
    EXPECT_EQ(module.IsFeaturePositive(id.c_str(), nullptr), row.result) << row.type;
    EXPECT_EQ(StateOf(id), 2);
  }
  const int before = Count();
  EXPECT_EQ(module.IsFeaturePositive("Unknown", nullptr), 0);
  EXPECT_EQ(Count(), before) << "a question makes no protocol";
}

TEST_F(ProtocolQueries, AnItemIsCutAtItsBuffer) {
  const std::string longest(1023, 'v');
  const std::string id = Stored([&](Record& record) {
    record.SetKeyWord("Own", "Short", "a,b").SetKeyWord("Own", "Long", longest + "rest");
  });
  std::string value(1025, '#');
  EXPECT_EQ(module.GetProtocolItem(id.c_str(), "Own", "Short", value.data()), 1);
  EXPECT_STREQ(value.c_str(), "a,b");
  EXPECT_EQ(module.GetProtocolItem(id.c_str(), "Own", "Long", value.data()), 1);
  EXPECT_EQ(value.c_str(), longest);
  EXPECT_EQ(value[1024], '#') << "written beyond the buffer";
  EXPECT_EQ(module.GetProtocolItem(id.c_str(), "Own", "Missing", value.data()), 0);
  EXPECT_EQ(module.GetProtocolItem("Unknown", "Own", "Short", value.data()), 0);
  EXPECT_EQ(StateOf(id), 2);
  // A protocol that somebody works with stays open.
  const Record open(id);
  EXPECT_EQ(module.GetProtocolItem(id.c_str(), "Own", "Short", value.data()), 1);
  EXPECT_EQ(StateOf(id), 1);
}

TEST_F(ProtocolQueries, TypesAreReportedInTheAddInsNumbers) {
  const struct {
    const char* dataFile;
    const char* boltedFile;
    const char* type;
    int kind;
    const char* name;
    int reported;
  } rows[] = {
      {"KEELDATA|SHAFT", nullptr, "1", 1, "Shaft calculation", 1},
      {"KEELDATA|SHAFT", nullptr, "2", 1, "Shaft calculation", 3},
      {"KEELDATA|SHAFT", nullptr, "3", 1, "Shaft calculation", 2},
      {"KEELDATA|SHAFT", nullptr, "4", 1, "Shaft calculation", 8},
      {"KEELDATA|SHAFT", nullptr, "5", 1, "Shaft calculation", 4},
      {"KEELDATA|SHAFT", nullptr, "6", 1, "Shaft calculation", 5},
      {"KEELDATA|SHAFT", nullptr, "7", 1, "Shaft calculation", 6},
      {"KEELDATA|SHAFT", nullptr, "8", 1, "Shaft calculation", 7},
      {"KEELDATA|SHAFT", nullptr, "9", 1, "Shaft calculation", 9},
      {"KEELDATA|SHAFT", nullptr, "14", 1, "Shaft calculation", 10},
      {"KEELDATA|SHAFT", nullptr, "10", 1, "Shaft calculation", 0},
      {"KEELDATA|SHAFT", "wbolcon", "2", 2, "wbolcon", 3},
      {"KeelData|userpart", nullptr, "2", 3, "Shaft calculation", 3},
      {"KeelData|asmpart", "wbolcon", "10", 4, "wbolcon", 0},
      {"xtalvek", nullptr, "x", 5, "Shaft calculation", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.dataFile) + row.type);
    const std::string reference = Unstored([&](Record& record) {
      record.SetKeyWord("Main", "DataFile", row.dataFile).SetGlobal("TypeOfPart", row.type);
      record.SetKeyWord("Calc", "CalcName", "Shaft calculation");
      if (row.boltedFile) record.SetKeyWord("MCWData", "MCWDataFile", row.boltedFile);
    });
    const int before = Count();
    char name[64] = "old";
    int type = -1;
    EXPECT_EQ(module.GetProtocolType(reference.c_str(), name, &type), row.kind);
    EXPECT_STREQ(name, row.name);
    EXPECT_EQ(type, row.reported);
    const int withoutName = row.kind == 2 ? 1 : row.kind;
    EXPECT_EQ(module.GetProtocolType(reference.c_str(), nullptr, nullptr), withoutName);
    EXPECT_EQ(Count(), before);
  }
  const int before = Count();
  char name[8] = "old";
  int type = -1;
  EXPECT_EQ(module.GetProtocolType("no marker", name, &type), 0);
  EXPECT_STREQ(name, "");
  EXPECT_EQ(type, 0);
  EXPECT_EQ(Count(), before);
}

TEST_F(ProtocolQueries, ABoltedConnectionIsListedInOrder) {
  std::string mainReference = Unstored([](Record& record) {
    record.SetKeyWord("MCWParts", "Hole3", "H").SetKeyWord("MCWParts", "Bolt", "B");
    record.SetKeyWord("MCWParts", "Nut1", "N").SetKeyWord("MCWParts", "Other", "O");
    record.SetKeyWord("MCWParts", "TopWasher1", "");
  });
  const std::string mainId = mainReference.substr(0, mainReference.find("<@PID>"));
  for (const auto& [from, to] :
       {std::pair{"<@PID>", "<@GMHPID>"}, std::pair{"<@EL>", "<@GMHEL>"}}) {
    for (std::size_t at = 0; (at = mainReference.find(from, at)) != std::string::npos;) {
      mainReference.replace(at, std::string(from).size(), to);
    }
  }
  const std::string reference =
      Unstored([&](Record& record) { record.SetKeyWord("MCWData", "MCWMainProt", mainReference); });
  const std::string expected = mainId + ",B,N,H";
  const int length = static_cast<int>(expected.size());

  const int before = Count();
  std::string list(expected.size() + 2, '#');
  int capacity = length;
  EXPECT_EQ(module.GetAllMCWProtocolIDs(reference.c_str(), list.data(), &capacity), -1);
  EXPECT_EQ(capacity, length + 1);
  EXPECT_EQ(list[0], '#');
  EXPECT_EQ(module.GetAllMCWProtocolIDs(reference.c_str(), list.data(), &capacity), 4);
  EXPECT_EQ(list.c_str(), expected);
  EXPECT_EQ(list[expected.size() + 1], '#');
  EXPECT_EQ(module.GetAllMCWProtocolIDs(reference.c_str(), nullptr, nullptr), -1);
  EXPECT_EQ(module.GetAllMCWProtocolIDs("no marker", list.data(), &capacity), 0);
  const std::string plain = Unstored([](Record&) {});
  EXPECT_EQ(module.GetAllMCWProtocolIDs(plain.c_str(), list.data(), &capacity), 0);
  EXPECT_EQ(Count(), before);
}

TEST_F(ProtocolQueries, PartInformationTellsWhatAnInsertWouldMake) {
  const std::string id = Stored([](Record& record) { Fill(record, kShaft); });
  int local = 7;
  char modelPath[1024] = "";
  char filePath[1024] = "";
  char caption[256] = "";
  EXPECT_EQ(module.GetPartInformation(id.c_str(), 0, 1, &local, modelPath, filePath, caption), 1);
  EXPECT_EQ(local, 0);
  EXPECT_EQ(modelPath, ModelPath());
  EXPECT_EQ(filePath, SharedFile());
  EXPECT_EQ(caption, Caption());
  EXPECT_EQ(module.GetPartInformation(id.c_str(), 0, 1, nullptr, nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(StateOf(id), 2);

  const std::string kindless = Stored([](Record& record) { Fill(record, "11"); });
  local = 7;
  EXPECT_EQ(module.GetPartInformation(kindless.c_str(), 0, 1, &local, modelPath, filePath, caption),
            0);
  EXPECT_EQ(module.GetPartInformation("Unknown", 0, 1, &local, modelPath, filePath, caption), 0);
  EXPECT_EQ(StateOf("Unknown"), 0);
  EXPECT_EQ(local, 7);
}

// --- copies and new protocols ---

TEST_F(ProtocolQueries, ACopyHasNoLinksAndItsOwnIdentity) {
  std::string source;
  const std::string reference = Unstored([&](Record& record) {
    source = record.Id();
    Fill(record, kShaft);
    record.SetKeyWord("Object", "ProtID", source);
    for (const char* section : {"LinksFrom", "LinksTo", "MCWData", "McwParts"}) {
      record.SetKeyWord(section, "Any", source);
    }
  });
  const int before = Count();
  std::string newId(64, '\0');
  std::string newReference(kRoom, '\0');
  ASSERT_EQ(module.CopyProtocol(reference.c_str(), newId.data(), newReference.data()), 1);
  newId.resize(newId.find('\0'));
  EXPECT_NE(newId, source);
  EXPECT_EQ(StateOf(newId), 2);
  EXPECT_EQ(StateOf(source), 0);
  EXPECT_EQ(Count(), kStrictCompanions ? before + 1 : before);
  EXPECT_EQ(std::string(newReference.c_str()).substr(0, newId.size() + 6), newId + "<@PID>");
  EXPECT_EQ(newReference.find(source), std::string::npos);
  const Record copy(newId);
  // The suite's contents bring their version along.
  EXPECT_EQ(copy.Version(), kStrictCompanions ? "1.0" : "2.0");
  EXPECT_EQ(copy.KeyWord("Object", "ProtID"), newId);
  EXPECT_EQ(copy.Parameter("d"), "20 mm");
  for (const char* section : {"LinksFrom", "LinksTo", "MCWData", "McwParts"}) {
    EXPECT_EQ(copy.KeyWord(section, "Any"), kMissing) << section;
  }
}

// Each text of a strict list has pages of its own, of which a process cannot have many.
TEST_F(ProtocolQueries, AReferenceOfTenMegabytesIsCopiedWhole) {
  const int items = kStrictCompanions ? 2'000 : 100'000;
  const std::size_t length = 10'000'000 / items;
  std::string source;
  const std::string reference = Unstored([&](Record& record) {
    source = record.Id();
    for (int i = 0; i < items; ++i) {
      record.SetKeyWord("Points", std::to_string(i).c_str(), std::string(length, 'a' + i % 26));
    }
  });
  ASSERT_GT(reference.size(), 10'000'000u);
  std::string newId(64, '\0');
  std::string newReference(reference.size() + newId.size(), '\0');
  ASSERT_EQ(module.CopyProtocol(reference.c_str(), newId.data(), newReference.data()), 1);
  // Not EXPECT_EQ, which would print both.
  EXPECT_TRUE(newReference.c_str() == newId.c_str() + reference.substr(source.size()));
}

TEST_F(ProtocolQueries, WhatIsNoReferenceIsNotCopied) {
  const int before = Count();
  char newId[64] = "old";
  char newReference[64] = "old";
  for (const char* odd : {"", "no marker", "<@PID>a<@EL>"}) {
    EXPECT_EQ(module.CopyProtocol(odd, newId, newReference), 0) << odd;
  }
  EXPECT_STREQ(newId, "old");
  EXPECT_EQ(Count(), before);
}

struct Item {
  const char* section;  // null: a global item
  const char* keyword;
  std::string user;
  std::string assembly;
};

TEST_F(ProtocolQueries, NewProtocolsHoldTheItemsOfTheirKind) {
  const Item items[] = {
      {nullptr, "Standard", "ISO", "ISO"},
      {nullptr, "PrfStd", "ISO", "ISO"},
      {nullptr, "Language", "NO", "NO"},
      {"Main", "DataFile", "KeelData|userpart", "KeelData|asmpart"},
      {nullptr, "Model", "UserPart", "UserPart"},
      {nullptr, "TypeOfPart", "2", "10"},
      {"Cadx", "ReallySmartPart", kMissing, kMissing},
      {"Cadx", "SmartPart", "1", kMissing},
  };
  const Item names[] = {{nullptr, "Caption", "Mine", {}},
                        {"Grupova", "UseUserDescription", "1", {}},
                        {"Grupova", "UserDescription", "Mine", {}},
                        {"Object", "CADDescription", "Mine", {}}};
  for (const bool user : {true, false}) {
    const auto create = user ? module.CreateUserProtocol : module.CreateAssemblyProtocol;
    for (const char* caption : {static_cast<const char*>(nullptr), "Mine"}) {
      char id[64] = "";
      std::string reference(kRoom, '\0');
      ASSERT_EQ(create(id, reference.data(), caption), 1);
      EXPECT_EQ(StateOf(id), 2);
      const Record record(id);
      EXPECT_EQ(record.Reference(), reference.c_str());
      const auto value = [&](const Item& item) {
        return item.section ? record.KeyWord(item.section, item.keyword)
                            : record.Global(item.keyword);
      };
      for (const Item& item : items) {
        EXPECT_EQ(value(item), user ? item.user : item.assembly) << item.keyword;
      }
      for (const Item& item : names) {
        EXPECT_EQ(value(item), caption ? item.user : kMissing) << item.keyword;
      }
    }
  }
}

TEST_F(ProtocolQueries, AFailedWriteEndsTheCreation) {
  if (!kStrictCompanions) return;
  strict::Core().Strict_SetAnswer("Com_PutViewKey", "0");
  char id[64] = "old";
  int capacity = 1000;
  EXPECT_EQ(module.CreateUserProtocol(id, id, "Mine"), 0);
  EXPECT_EQ(module.CreateAssemblyProtocol(id, id, nullptr), 0);
  EXPECT_EQ(module.CreatePartProtocol("K|X", "DIN", "V", "a,1", id, id, &capacity), 0);
  EXPECT_STREQ(id, "old");
  EXPECT_EQ(capacity, 0);
  EXPECT_EQ(Count(), 3) << "what was made stays in the store";
}

TEST_F(ProtocolQueries, APartsReferenceMustFitWithItsNul) {
  const auto create = [&](char* id, char* reference, int* capacity) {
    return module.CreatePartProtocol("KEELDATA|SPRING", "DIN", "FRONT", "d,20,k,a<VXCOMMA>b", id,
                                     reference, capacity);
  };
  char id[64] = "old";
  std::string reference(kRoom, '#');
  int capacity = 0;
  EXPECT_EQ(create(id, reference.data(), &capacity), 0);
  const int length = capacity - 1;
  ASSERT_GT(length, 0);
  capacity = length;
  EXPECT_EQ(create(id, reference.data(), &capacity), 0);
  EXPECT_EQ(capacity, length + 1);
  EXPECT_STREQ(id, "old");
  EXPECT_EQ(reference[0], '#');
  EXPECT_EQ(create(id, reference.data(), &capacity), 1);
  EXPECT_EQ(capacity, 0);
  EXPECT_EQ(std::string(reference.c_str()).size(), static_cast<std::size_t>(length));
  EXPECT_EQ(create(nullptr, nullptr, nullptr), 0);

  const Record record(id);
  EXPECT_EQ(record.Global("Standard"), "DIN");
  EXPECT_EQ(record.Global("PrfStd"), kMissing);
  EXPECT_EQ(record.Global("Language"), "NO");
  EXPECT_EQ(record.Global("TypeOfPart"), "10");
  EXPECT_EQ(record.KeyWord("Main", "DataFile"), "KEELDATA|SPRING");
  EXPECT_THAT(record.Parameter("d"), testing::StartsWith("20"));
  EXPECT_EQ(record.KeyWord("Cadx", "CADVars"), "d,k");
}

}  // namespace
}  // namespace quillmar::contract
