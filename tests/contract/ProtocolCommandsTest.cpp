// Commands on the object that is selected in the CAD and on the active assembly.
#include <chrono>
#include <functional>
#include <thread>

#include "Calculation.h"
#include "platform/Messages.h"

namespace quillmar::contract {
namespace {

using Edit = std::function<void(Record&)>;

const std::string kHostCommand = "19";
const std::string kHostUpdate = "27";
const std::string kHostShow = "2";

std::string Quoted(const std::string& method, const std::string& text) {
  return method + "(\"" + text + "\")";
}

void Answer(const std::string& key, const std::string& answer) {
  strict::Core().Strict_SetAnswer(key.c_str(), answer.c_str());
}

class ProtocolCommands : public Calculation {
 protected:
  struct InCad {
    std::string id;
    std::string reference;
  };

  // An object in the CAD: it can be asked by the identifier of its protocol.
  static InCad PutIntoCad(const Edit& edit, bool stored = false) {
    InCad object;
    {
      Record record;
      Fill(record, kShaft);
      edit(record);
      object = {record.Id(), record.Reference()};
    }
    if (!stored) Erase(object.id);
    Answer("GetProtocol(" + object.id + ").text", object.reference);
    return object;
  }

  static std::string Select(const InCad& object) {
    Answer("GetPart.partName", "Selected:1");
    Answer("GetPart.text", object.reference);
    Answer("GetProtocol(Selected:1).text", object.reference);
    return object.id;
  }
  static std::string Select(const Edit& edit, bool stored = false) {
    return Select(PutIntoCad(edit, stored));
  }

  static InCad MakeAssembly(const Edit& edit) {
    const InCad assembly = PutIntoCad([&](Record& record) {
      record.SetKeyWord("Main", "DataFile", "KeelData|asmpart").SetGlobal("TypeOfPart", "10");
      edit(record);
    });
    Answer("GetAssembly.first", "Gearbox");
    Answer("GetAssembly.second", assembly.id);
    Answer("GetAssembly.text", assembly.reference);
    Answer("GetAssemblyPath.path", "C:\\Models\\Gearbox.asm");
    return assembly;
  }

  void Run(int number) {
    host.Forget();
    EXPECT_EQ(module.CallUTFunction(number), 1);
    platform::PumpMessages();
  }

  // The identifier in the host's last call of a method with one text.
  std::string LastTold(const std::string& method) {
    const std::vector<std::string> commands = host.Commands();
    if (commands.empty() || commands.back().rfind(method + "(\"", 0) != 0) return {};
    const std::string& call = commands.back();
    return call.substr(method.size() + 2, call.size() - method.size() - 4);
  }

  // Runs it; protocols more in the store than before.
  int Left(int number) {
    const int before = StoredProtocols();
    Run(number);
    EXPECT_EQ(strict::Core().Strict_OpenProtocols(), 0);
    return StoredProtocols() - before;
  }
};

// --- what each command leaves in the store ---

struct StoreRow {
  int number;
  int calculation;     // protocols more than before: of a calculation that the store did not hold
  int storedBefore;    // of one that it held
  int userPart;        // of a user part
  int storedUserPart;  // of a user part that the store held
  int unregistered;    // of an object whose parameters the CAD does not tell
};

constexpr int kDataWizard = 4003;  // asks the host for the wizard's folder

// A group is a protocol more. A unique copy is made of user parts, too; the data wizard makes none.
constexpr StoreRow kStoreRows[] = {
    {1, 1, 0, 0, -1, 0},          {2, 2, 1, 0, -1, 0},   {3, 1, 0, 0, -1, 0}, {4, 1, 0, 0, -1, 0},
    {5, 2, 1, 0, -1, 0},          {6, 0, -1, 0, -1, 0},  {8, 2, 1, 0, -1, 0}, {103, 1, 0, 0, -1, 0},
    {kDataWizard, 0, 0, 0, 0, 0}, {4004, 1, 0, 1, 0, 0},
};

TEST_F(ProtocolCommands, TheStoreHoldsWhatTheTableSays) {
  const Edit calculation = [](Record&) {};
  const Edit userPart = [](Record& record) {
    record.SetKeyWord("Main", "DataFile", "KeelData|userpart");
  };
  host.Answer("32", "C:\\Nowhere");  // no wizard is started
  for (const StoreRow& row : kStoreRows) {
    SCOPED_TRACE(row.number);
    const auto run = [&](const Edit& edit, bool stored) {
      Select(edit, stored);
      return Left(row.number);
    };
    EXPECT_EQ(run(calculation, false), row.calculation);
    EXPECT_EQ(run(calculation, true), row.storedBefore);
    EXPECT_EQ(run(userPart, false), row.userPart);
    EXPECT_EQ(run(userPart, true), row.storedUserPart);
    for (const char* kind : {"KeelData|asmpart", "xtalvek"}) {
      if (row.number == 4004) continue;
      EXPECT_EQ(run([&](Record& r) { r.SetKeyWord("Main", "DataFile", kind); }, false), 0) << kind;
    }
    Answer("GetParameterListEx", "0");
    EXPECT_EQ(run(calculation, false), row.unregistered);
    if (row.number != kDataWizard) {
      EXPECT_THAT(host.Commands(), IsEmpty());
    }
    strict::Core().Strict_SetAnswer("GetParameterListEx", nullptr);
    Answer("GetPart", "0");
    EXPECT_EQ(run(calculation, false), 0);
    EXPECT_THAT(host.Commands(), IsEmpty());
    strict::Core().Strict_SetAnswer("GetPart", nullptr);
  }
}

// What a command leaves whose store or CAD refuses something: the working copy goes, also where the
// store held the protocol before.
TEST_F(ProtocolCommands, TheStoreHoldsNothingMoreAfterAFailure) {
  const struct {
    const char* refused;
    std::vector<int> commands;
  } rows[] = {
      {"Com_PutBuffer", {1, 2, 3, 4, 5, 6, 8, 103, 4004}},
      {"Com_SetVersion", {1, 2, 3, 4, 5, 6, 8, 103, 4004}},
      {"Com_PutKeyWord", {1, 2, 3, 4, 5, 6, 8, 103, 4004}},
      {"Com_CopyProtocol", {2, 5, 4004}},
      {"Com_PutGlobalData", {8}},
      {"Com_PutProtocol", {8}},
      {"ConnectProtocol", {4004}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.refused);
    if (!kStrictCompanions && std::string_view(row.refused).starts_with("Com_")) continue;
    for (const int number : row.commands) {
      for (const bool stored : {false, true}) {
        Select([](Record&) {}, stored);
        Answer(row.refused, "0");
        EXPECT_EQ(Left(number), stored ? -1 : 0) << number;
        strict::Core().Strict_SetAnswer(row.refused, nullptr);
        EXPECT_THAT(host.Commands(), IsEmpty());
      }
    }
  }
}

// --- the commands one by one ---

TEST_F(ProtocolCommands, AnUpdateIsHandedToTheHost) {
  const std::string id = Select([](Record&) {});
  Run(4);
  EXPECT_THAT(host.Commands(), ElementsAre(Quoted(kHostUpdate, id)));
  ASSERT_EQ(StateOf(id), 2);
  const Record record(id);
  EXPECT_EQ(record.KeyWord("Cadx", "id"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "update"), "1");
  EXPECT_EQ(record.KeyWord("Cadx", "recalc"), kMissing);
  EXPECT_EQ(record.KeyWord("Cadx", "Drawn"), "1");
  EXPECT_EQ(record.KeyWord("Object", "ProtID"), id);
}

// The identifier of the copy that a command made: the newest protocol that is told nowhere else is
// found by its own identity.
TEST_F(ProtocolCommands, ACopyStandsBesideItsSource) {
  const struct {
    int number;
    std::string hostCall;
    std::string update;
    bool replaces;
  } rows[] = {{5, kHostCommand + "(1)", kMissing, false}, {2, kHostCommand + "(2)", "1", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    const std::string id = Select([](Record&) {});
    ForgetCalls();
    Run(row.number);
    EXPECT_THAT(host.Commands(), ElementsAre(row.hostCall));
    ASSERT_EQ(StateOf(id), 2);
    {
      const Record source(id);
      EXPECT_EQ(source.KeyWord("Cadx", "id"), "1");
      EXPECT_EQ(source.KeyWord("Cadx", "update"), row.update);
      EXPECT_EQ(source.KeyWord("Cadx", "OldPartPID"), row.replaces ? id : kMissing);
    }
    if (!kStrictCompanions) continue;
    std::string copyId;
    for (const JournalCall& call : Calls("Com_PutKeyWord")) {
      if (call.arguments[2] == "ProtID") copyId = call.arguments[0];
    }
    ASSERT_NE(copyId, id);
    ASSERT_EQ(StateOf(copyId), 2);
    const Record copy(copyId);
    EXPECT_EQ(copy.KeyWord("Object", "ProtID"), copyId);
    EXPECT_EQ(copy.KeyWord("Cadx", "id"), "1");
    EXPECT_EQ(copy.KeyWord("Cadx", "OldPartPID"), row.replaces ? id : kMissing);
  }
}

TEST_F(ProtocolCommands, ARecalculationIsShownAgain) {
  for (const int number : {1, 3, 103}) {
    SCOPED_TRACE(number);
    const std::string id = Select([](Record&) {});
    Run(number);
    EXPECT_THAT(host.Commands(), ElementsAre(Quoted(kHostShow, id)));
    const Record record(id);
    for (const char* flag : {"id", "update", "recalc"}) {
      EXPECT_EQ(record.KeyWord("Cadx", flag), "1") << flag;
    }
  }
}

TEST_F(ProtocolCommands, ADependentViewNeedsItsSource) {
  for (const int number : {1, 3, 4, 5, 103}) {
    SCOPED_TRACE(number);
    const InCad source = PutIntoCad([](Record&) {});
    const Edit view = [&](Record& record) {
      record.SetKeyWord("Cadx", "NewView", "1");
      record.SetKeyWord("LinksFrom", "NewView", source.id + "@NewView");
    };
    const std::string id = Select(view);
    Run(number);
    ASSERT_THAT(host.Commands(), SizeIs(1));
    EXPECT_EQ(StateOf(source.id), number == 103 ? 0 : 2) << "an independent part needs none";
    if (number == 3) {
      EXPECT_EQ(host.Commands()[0], Quoted(kHostShow, source.id));
      EXPECT_EQ(Record(source.id).KeyWord("Cadx", "recalc"), "1");
      EXPECT_EQ(StateOf(id), 0) << "the view itself is not worked on";
      continue;
    }
    ASSERT_EQ(StateOf(id), 2);
    const Record record(id);
    EXPECT_EQ(record.KeyWord("Cadx", "NewView"), number == 103 ? kMissing : "1");
    EXPECT_EQ(record.KeyWord("LinksFrom", "NewView") == kMissing, number == 103);
  }
  // A source that is gone from the CAD ends all of them but the one that makes the view free.
  for (const int number : {1, 3, 4, 5}) {
    const std::string id = Select([](Record& record) {
      record.SetKeyWord("Cadx", "NewView", "1").SetKeyWord("LinksFrom", "NewView", "GONE@NewView");
    });
    Run(number);
    EXPECT_THAT(host.Commands(), IsEmpty()) << number;
    EXPECT_EQ(StateOf(id), 0) << number;
  }
}

// A bolt whose connection another protocol stands for.
std::string Alternate(std::string reference) {
  for (const auto& [from, to] :
       {std::pair{"<@PID>", "<@GMHPID>"}, std::pair{"<@EL>", "<@GMHEL>"}}) {
    for (std::size_t at = 0; (at = reference.find(from, at)) != std::string::npos;) {
      reference.replace(at, std::string(from).size(), to);
    }
  }
  return reference;
}

TEST_F(ProtocolCommands, APartOfABoltedConnectionStandsForTheWhole) {
  for (const char* file : {"wbolcon", "KEELDATA|thrjoin"}) {
    SCOPED_TRACE(file);
    const InCad main = PutIntoCad([](Record& r) {
      r.SetKeyWord("MCWParts", "Bolt", "B1").SetKeyWord("MCWParts", "Nut1", "N");
    });
    const Edit bolt = [&](Record& record) {
      record.SetKeyWord("MCWData", "MCWDataFile", file);
      record.SetKeyWord("MCWData", "MCWMainProt", Alternate(main.reference));
    };
    const std::string id = Select(bolt);
    Run(1);
    EXPECT_THAT(host.Commands(), ElementsAre(Quoted(kHostShow, main.id)));
    EXPECT_EQ(Record(main.id).KeyWord("Cadx", "recalc"), "1");
    EXPECT_EQ(StateOf(id), 0);

    ForgetCalls();
    Run(6);
    EXPECT_THAT(host.Commands(), IsEmpty());
    if (!kStrictCompanions) continue;
    const std::vector<JournalCall> sent = Calls("SendModelessMessage");
    ASSERT_THAT(sent, SizeIs(1));
    EXPECT_EQ(sent[0].arguments[0], "5555");
    EXPECT_EQ(sent[0].arguments[1], "10");
    const Record letter(sent[0].arguments[2]);
    EXPECT_EQ(letter.KeyWord("Main", "Protocols"), main.id + ",B1,N");
    EXPECT_EQ(letter.KeyWord("Main", "Caller"), "");
  }
}

TEST_F(ProtocolCommands, AUniqueCopyTakesTheObjectOver) {
  const std::string id = Select([](Record&) {});
  ASSERT_EQ(module.CreateUniqueCopy(), 1);
  const std::vector<JournalCall> connected = Calls("ConnectProtocol");
  ASSERT_THAT(connected, SizeIs(1));
  EXPECT_EQ(connected[0].arguments[0], id);
  const std::string& reference = connected[0].arguments[1];
  const std::string copyId = reference.substr(0, reference.find("<@PID>"));
  EXPECT_NE(copyId, id);
  EXPECT_EQ(Record(copyId).KeyWord("Object", "ProtID"), copyId);

  Answer("ConnectProtocol", "0");
  Select([](Record&) {});
  EXPECT_EQ(module.CreateUniqueCopy(), 0);
}

TEST_F(ProtocolCommands, TheOptimizerGetsTheSelectedCalculation) {
  const std::string id = Select([](Record&) {});
  EXPECT_EQ(module.CallOptim(), 1);
  EXPECT_EQ(host.Commands().back(), Quoted(kHostShow, id));
  {
    const Record record(id);
    EXPECT_EQ(record.KeyWord("Cadx", "id"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "update"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "recalc"), "0");
    EXPECT_EQ(record.KeyWord("Cadx", "optim"), "1");
    EXPECT_EQ(record.Global("BOM5"), "2.5");
  }
  const std::string userPart =
      Select([](Record& r) { r.SetKeyWord("Main", "DataFile", "K|userpart"); });
  EXPECT_EQ(module.CallOptim(), 1);
  EXPECT_EQ(StateOf(userPart), 0);
  EXPECT_EQ(host.Commands().back(), Quoted(kHostShow, id));
  Answer("GetPart", "0");
  EXPECT_EQ(module.CallOptim(), 0);
}

TEST_F(ProtocolCommands, AnOldLayoutIsConvertedBeforeTheHostHasIt) {
  const std::string id = Select([](Record& record) {
    record.SetKeyWord("Main", "DataFile", "KeelData|GEAR2");
    record.SetParameter("cas", "0.25", "mm").SetVersion(1, 0);
  });
  Run(4);
  EXPECT_EQ(LastTold(kHostUpdate), id);
  const Record record(id);
  EXPECT_EQ(record.Parameter("cs"), "0.25 mm");
  EXPECT_EQ(record.Version(), "2.0");
}

// --- trees and groups ---

TEST_F(ProtocolCommands, AScanFollowsChildrenInOrderAndEndsInCircles) {
  // The store gives the identifiers; the references are made when all of them are known.
  std::vector<std::string> ids;
  for (int i = 0; i < 6; ++i) ids.push_back(PutIntoCad([](Record&) {}, true).id);
  const auto child = [&](int from, const std::vector<int>& to) {
    Record record(ids[from]);
    for (const int at : to) record.SetKeyWord("LinksTo", ids[at].c_str(), "d");
    if (from == 4) record.SetMember(ids[5]);
    return record.Reference();
  };
  const std::vector<int> links[] = {{1, 2}, {3, 0}, {4, 5}, {1}, {}, {}};
  std::vector<InCad> objects;
  for (int i = 0; i < 6; ++i) {
    objects.push_back({ids[i], child(i, links[i])});
    // The CAD has lost the last one.
    Answer("GetProtocol(" + ids[i] + ").text", i == 5 ? "" : objects[i].reference);
  }
  Select(objects[0]);
  const auto scan = [&] {
    Run(8);
    const std::string group = LastTold(kHostShow);
    EXPECT_EQ(StateOf(group), 2);
    const Record record(group);
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), "xtalvek");
    EXPECT_EQ(record.KeyWord("Cadx", "Recalc"), "1");
    return record.Members();
  };
  // 4 has members of its own, 5 is not in the CAD.
  EXPECT_EQ(scan(), ids[0] + ";" + ids[1] + ";" + ids[2] + ";" + ids[3] + ";");
  const std::string general = kModuleKey + "\\OptGeneral";
  SetNumber(Hive::CurrentUser, general, "DepthChiIdx", 1);
  EXPECT_EQ(scan(), ids[0] + ";" + ids[1] + ";" + ids[2] + ";");
  SetNumber(Hive::CurrentUser, general, "DepthChiIdx", 0);
  EXPECT_EQ(scan(), ids[0] + ";");
}

// Recursion would need a stack of the chain's length.
TEST_F(ProtocolCommands, AChainOfTenThousandIsScanned) {
  // The suite's store writes each of them to the disk.
  const int length = kStrictCompanions ? 10000 : 100;
  const InCad pattern =
      PutIntoCad([](Record& record) { record.SetKeyWord("LinksTo", "NEXTONE", "d"); });
  const auto id = [](int number) { return "CHAIN" + std::to_string(number); };
  InCad object;
  for (int i = 0; i < length; ++i) {
    std::string reference = pattern.reference;
    reference.replace(reference.find("NEXTONE"), 7, id(i - 1));
    reference.replace(0, reference.find('<'), id(i));
    object = {id(i), reference};
    Answer("GetProtocol(" + object.id + ").text", reference);
  }
  Select(object);
  Run(8);
  const std::string members = Record(LastTold(kHostShow)).Members();
  EXPECT_EQ(std::count(members.begin(), members.end(), ';'), length);
}

TEST_F(ProtocolCommands, OnlyTheTimerThatWasArmedLastInsertsTheNextObject) {
  const std::string first = Calculated(kShaft);
  const std::string second = Calculated(kShaft);
  // A selected group whose members stand in no model yet.
  Select([&](Record& record) { record.SetMember(first).SetMember(second); });
  ASSERT_EQ(module.CallOptim(), 1);
  ForgetCalls();
  const auto wait = [&](std::size_t inserts) {
    for (int i = 0; i < 60 && Calls("InsertShaft").size() < inserts; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      platform::PumpMessages();
    }
  };
  const int once = module.GMInsertNextObject();
  EXPECT_NE(once, 0);
  EXPECT_NE(module.GMInsertNextObject(), 0);
  EXPECT_THAT(Calls("InsertShaft"), IsEmpty());
  wait(1);
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  platform::PumpMessages();
  ASSERT_THAT(Calls("InsertShaft"), SizeIs(1));
  EXPECT_EQ(Calls("InsertShaft")[0].arguments[0], first);
  module.GMInsertNextObject();
  wait(2);
  ASSERT_THAT(Calls("InsertShaft"), SizeIs(2));
  EXPECT_EQ(Calls("InsertShaft")[1].arguments[0], second);
}

// --- the active assembly ---

// The CAD has an assembly with one child, and both as its parts.
TEST_F(ProtocolCommands, WhatCommandsOnTheAssemblyLeaveInTheStore) {
  const struct {
    int number;
    const char* refused;  // by the CAD or the store; null for nothing
    int left;
  } rows[] = {
      {7, nullptr, 3},  // assembly, child, group
      {7, "GetAssembly", 1},
      {7, "GetParameterListEx", 1},  // the assembly that could not be described is the CAD's own
      {7, "Com_PutProtocol", 2},
      {9, nullptr, 1},
      {9, "InsertAssembly", 1},
      {9, "Com_PutKeyWord", 1},
      {10, nullptr, 3},
      {10, "GetAssembly", 1},
      {10, "Com_PutGlobalData", 1},
      {4001, nullptr, 2},  // the part has no links
      {4001, "GetAllParts", 0},
      {4001, "Com_PutGlobalData", 1},
      {4002, nullptr, 0},
      {4002, "GetAllParts", 0},
      {4002, "ChangeShaft", 0},
  };
  for (const auto& row : rows) {
    const std::string refused = row.refused == nullptr ? "" : row.refused;
    SCOPED_TRACE(std::to_string(row.number) + " " + refused);
    if (!kStrictCompanions && refused.starts_with("Com_")) continue;
    const InCad part = PutIntoCad([](Record&) {});
    MakeAssembly([&](Record& record) { record.SetKeyWord("LinksTo", part.id.c_str(), "d"); });
    Answer("GetAllParts.text", part.reference);
    if (!refused.empty()) Answer(refused, "0");
    EXPECT_EQ(Left(row.number), row.left);
    if (!refused.empty()) strict::Core().Strict_SetAnswer(refused.c_str(), nullptr);
  }
}

TEST_F(ProtocolCommands, TheAssemblyIsDescribedAndScanned) {
  const InCad part = PutIntoCad([](Record& record) { record.SetGlobal("Bom7", "1"); });
  const InCad view = PutIntoCad([](Record& record) { record.SetGlobal("Bom7", "0"); });
  const InCad assembly = MakeAssembly([&](Record& record) {
    record.SetKeyWord("Main", "DataFile", "KeelData|userpart").SetGlobal("TypeOfPart", "2");
    record.SetKeyWord("LinksTo", part.id.c_str(), "d").SetKeyWord("LinksTo", view.id.c_str(), "d");
  });
  Answer("GetFeaturesState.text", "Hole,1,");
  const struct {
    int number;
    const char* dataFile;
    std::string members;
  } rows[] = {{7, "xtalvek", assembly.id + ";" + part.id + ";" + view.id + ";"},
              {10, "XBom", assembly.id + ";" + part.id + ";"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    Run(row.number);
    const std::string group = LastTold(kHostShow);
    ASSERT_EQ(StateOf(group), 2);
    EXPECT_EQ(Record(group).KeyWord("Main", "DataFile"), row.dataFile);
    EXPECT_EQ(Record(group).Members(), row.members);
    ASSERT_EQ(StateOf(assembly.id), 2);
    const Record record(assembly.id);
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), "KeelData|asmpart");
    EXPECT_EQ(record.Global("TypeOfPart"), "10");
    EXPECT_EQ(record.Global("ReallyScan"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "AsmPath"), "C:\\Models\\Gearbox.asm");
    EXPECT_EQ(record.KeyWord("Object", "CADDescription"), "Gearbox");
    EXPECT_EQ(record.KeyWord("Object", "ProtID"), assembly.id);
    EXPECT_THAT(record.Parameter("VXP_FS_Hole"), testing::StartsWith("1"));
  }
}

TEST_F(ProtocolCommands, AnAssemblyWithoutAProtocolGetsOne) {
  Answer("GetAssemblyName.name", "Gearbox");
  Run(9);
  const std::vector<JournalCall> inserted = Calls("InsertAssembly");
  ASSERT_THAT(inserted, SizeIs(1));
  const std::string& id = inserted[0].arguments[0];
  EXPECT_EQ(inserted[0].arguments[2].rfind(id + "<@PID>", 0), 0u);
  ASSERT_EQ(StateOf(id), 2);
  {
    const Record record(id);
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), "KeelData|asmpart");
    EXPECT_EQ(record.KeyWord("Cadx", "ReallySmartPart"), "1");
    EXPECT_EQ(record.KeyWord("Cadx", "SmartPart"), "1");
    EXPECT_EQ(record.Global("Caption"), "Gearbox");
    EXPECT_EQ(record.KeyWord("Grupova", "UserDescription"), "Gearbox");
  }
  // Asked for by a scan when the CAD has no assembly: it is asked twice, and given one in between.
  Answer("GetAssembly", "0");
  ForgetCalls();
  Run(7);
  EXPECT_THAT(Calls("GetAssembly"), SizeIs(2));
  EXPECT_THAT(Calls("InsertAssembly"), SizeIs(1));
  EXPECT_THAT(host.Commands(), IsEmpty());
  Answer("InsertAssembly", "0");
  ForgetCalls();
  Run(7);
  EXPECT_THAT(Calls("GetAssembly"), SizeIs(2));
}

TEST_F(ProtocolCommands, RefreshingLinksUpdatesLinkedPartsAndShowsTheGroup) {
  const InCad assembly = MakeAssembly([](Record&) {});
  const InCad linked = PutIntoCad([](Record& record) { record.SetLinkFrom("d", "PARENT@d"); });
  const InCad alone = PutIntoCad([](Record&) {});
  const InCad expression = PutIntoCad([](Record& record) { record.SetLinkFrom("d", "#2*k"); });
  Answer("GetAllParts.text", alone.reference + "<@NEXT_PROT>" + linked.reference + "<@NEXT_PROT>" +
                                 expression.reference + "<@NEXT_PROT>odd");
  EXPECT_EQ(module.RefreshAllLinks(), 1);
  const std::string group = LastTold(kHostShow);
  {
    const Record record(group);
    EXPECT_EQ(record.Members(), assembly.id + ";");
    EXPECT_EQ(record.KeyWord("Main", "DataFile"), "xtalvek");
    EXPECT_EQ(record.Global("Standard"), "ISO");
    EXPECT_EQ(record.KeyWord("Cadx", "SmartPart"), "1");
  }
  EXPECT_EQ(Record(assembly.id).Global("ReallyScan"), "1");
  EXPECT_EQ(StateOf(alone.id), 0);
  // The strict store keeps links out of the reference text.
  EXPECT_THAT(Calls("ChangeShaft"), SizeIs(kStrictCompanions ? 0 : 1));
  if (!kStrictCompanions) {
    EXPECT_EQ(Calls("ChangeShaft")[0].arguments[0], linked.id);
    EXPECT_EQ(Record(linked.id).KeyWord("Cadx", "FromCad"), "1");
    EXPECT_EQ(StateOf(expression.id), 0) << "a parameter's expression links no protocols";
  }

  Run(4001);
  EXPECT_NE(LastTold(kHostShow), "");
  Answer("GetAllParts", "0");
  EXPECT_EQ(module.RefreshAllLinks(), 0);
}

}  // namespace
}  // namespace quillmar::contract
