// Protocols of one layout become protocols of the other, on the real store.
#include <random>

#include "PartsWorld.h"
#include "base/RegistryKey.h"
#include "conversion/ProtocolConverter.h"

namespace quillmar::test {
namespace {

using Lines = std::vector<std::string>;
using Protocols = std::vector<std::unique_ptr<VXProtocol>>;

class ConversionTest : public PartsWorld {
 protected:
  // A protocol of that calculation, version and view key.
  std::string Make(const std::string& dataFile, int major, int minor, const std::string& viewKey,
                   const std::vector<Entry>& entries = {}) {
    const std::string protocolId = MakeProtocol("p", {{"Main", "DataFile", dataFile.c_str()}});
    Put(protocolId, entries);
    VXProtocol protocol(protocols, protocolId);
    protocol.SetVersion(major, minor);
    protocol.PutViewKey(viewKey);
    return protocolId;
  }

  int Convert(const std::string& protocolId, int targetMajor) {
    VXProtocol protocol(protocols, protocolId);
    TakeReports();
    Journal::Get().Reset();
    return ConvertProtocol(session, converter.get(), protocol, targetMajor);
  }

  // "major.minor viewKey".
  std::string State(const std::string& protocolId) {
    VXProtocol protocol(protocols, protocolId);
    int major = 0;
    int minor = 0;
    std::string viewKey;
    protocol.GetVersion(major, minor);
    protocol.GetViewKey(viewKey);
    return std::to_string(major) + "." + std::to_string(minor) + " " + viewKey;
  }

  void UseMappingFile(const std::string& text) {
    const std::string ini = WriteSuiteFile("ProtConv.ini", text);
    mapping = {};
    converter = std::make_unique<ProtocolConverter>("Cad", ini, mapping);
  }

  ViewKeyMapping mapping;
  std::unique_ptr<ProtocolConverter> converter =
      std::make_unique<ProtocolConverter>("Cad", SuiteFolder() + "\\none.ini", mapping);
};

TEST_F(ConversionTest, ParametersFollowTheKind) {
  struct Row {
    const char* dataFile;
    int from;
    int to;
    std::vector<Entry> before;
    std::vector<std::pair<const char*, const char*>> after;
  };
  const Row rows[] = {
      {"KEELDATA|SPRING",
       1,
       0,
       {{"Data", "xxDimIncrement", "1", "mm"}},
       {{"xxDimIncrement", "1 mm"}}},
      {"SPRING",
       2,
       1,
       {{"Data", "xxDimIncrement", "1", "mm"}, {"Data", "d", "2", "mm"}},
       {{"xxDimIncrement", " "}, {"d", "2 mm"}}},
      {"KEELDATA|gear1",
       1,
       0,
       {{"Data", "IT", "7.5", "ND"}},
       {{"IT", "7.5 ND"}, {"stupenPresnosti", "7 ND"}}},
      {"GEAR1",
       2,
       1,
       {{"Data", "stupenPresnosti", "6", "ND"},
        {"Data", "gama", "1", "x"},
        {"Data", "deltaAlfa1", "1", "x"},
        {"Data", "deltaAlfa2", "1", "x"},
        {"Data", "Fa1", "1", "x"},
        {"Data", "Fa2", "1", "x"}},
       {{"IT", "6 ND"},
        {"stupenPresnosti", " "},
        {"gama", " "},
        {"deltaAlfa1", " "},
        {"deltaAlfa2", " "},
        {"Fa1", " "},
        {"Fa2", " "}}},
      {"GEAR2", 1, 0, {{"Data", "cas", "0.25", "mm"}}, {{"cs", "0.25 mm"}, {"cas", " "}}},
      {"GEAR2", 1, 0, {{"Data", "cas", "", ""}}, {{"cs", " "}, {"cas", " "}}},
      {"GEAR2",
       2,
       1,
       {{"Data", "cs", "0.25", "mm"}, {"Data", "pk", "1", "x"}},
       {{"cas", "0.25 mm"}, {"cs", " "}, {"pk", " "}, {"snm1", "(none)"}}},
      {"GEAR3",
       1,
       0,
       {{"Data", "has", "1", "a"}, {"Data", "cas", "2", "b"}},
       {{"ha*", "1 a"}, {"c*", "2 b"}, {"has", " "}, {"cas", " "}}},
      {"GEAR3",
       2,
       1,
       {{"Data", "ha*", "1", "a"},
        {"Data", "c*", "2", "b"},
        {"Data", "sigmaH", "1", "x"},
        {"Data", "xxDimIncrement", "1", "x"}},
       {{"has", "1 a"}, {"cas", "2 b"}, {"ha*", " "}, {"sigmaH", " "}, {"xxDimIncrement", " "}}},
  };
  for (const Row& row : rows) {
    const std::string p = Make(row.dataFile, row.from, 3, "V", row.before);
    EXPECT_EQ(Convert(p, row.to), 1);
    EXPECT_EQ(State(p), std::to_string(row.to == 0 ? 2 : row.to) + ".0 V") << row.dataFile;
    for (const auto& [name, value] : row.after) {
      EXPECT_EQ(GetParam(p, name), value) << row.dataFile << " " << name;
    }
  }
}

// What belongs together, written here a second time.
struct Kind {
  const char* dataFile;
  std::vector<std::pair<std::string, std::string>> moved;  // old, current
  std::vector<std::string> cleared;                        // on the way down
  // Current name of a value that goes up as its integer and stays under the old name.
  std::string copied = "";
};

const Kind kKinds[] = {
    {"SPRING", {}, {"xxDimIncrement"}},
    {"GEAR1",
     {{"IT", "stupenPresnosti"}},
     {"gama", "deltaAlfa1", "deltaAlfa2", "Fa1", "Fa2"},
     "stupenPresnosti"},
    {"GEAR2",
     {{"cas", "cs"}},
     {"snm1", "snm2", "bNavrh", "mNavrh", "cMax", "co1", "co2", "cd1", "cd2", "pk", "Fa1", "Fa2"}},
    {"GEAR3",
     {{"has", "ha*"}, {"cas", "c*"}},
     {"flagB1", "flagB2", "dw1", "hs1", "hs2", "ha2", "hf2", "sigmaF", "sigmaH", "xxDimIncrement"}},
};

// The calculation changes what came up, adds results of its own and keeps nothing of the old names.
TEST_F(ConversionTest, WhatGoesUpComesDownWithWhatWasChanged) {
  const std::string kNothing = " ";
  for (const Kind& kind : kKinds) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
      SCOPED_TRACE(kind.dataFile + std::to_string(seed));
      std::mt19937 random(seed);
      const auto any = [&] { return std::to_string(random() % 1000) + "." + std::to_string(seed); };
      const std::string p = Make(kind.dataFile, 1, 0, "V");
      std::map<std::string, std::string> down = {{"z", any() + " mm"}, {"free", any() + " ND"}};
      const auto put = [&](const std::string& name, const std::string& value, const char* unit) {
        VXProtocol(protocols, p).PutDataParam(name, value, unit);
      };
      for (const auto& [name, text] : down) {
        put(name, text.substr(0, text.find(' ')), text.substr(text.find(' ') + 1).c_str());
      }
      std::vector<std::pair<std::string, std::string>> present;
      for (const auto& names : kind.moved) {
        if (random() % 4 == 0) continue;  // an old calculation may not have had it
        present.push_back(names);
        put(names.first, any(), "in");
      }
      std::map<std::string, std::string> old;
      for (const auto& names : present) old[names.first] = GetParam(p, names.first.c_str());

      EXPECT_EQ(Convert(p, 0), 1);
      EXPECT_EQ(State(p), "2.0 V");
      for (const auto& [before, current] : present) {
        const std::string& value = old[before];
        const bool stays = current == kind.copied;
        EXPECT_EQ(GetParam(p, current.c_str()),
                  stays ? value.substr(0, value.find('.')) + " in" : value);
        EXPECT_EQ(GetParam(p, before.c_str()), stays ? value : kNothing);
        put(before, "", "");
        const std::string changed = any();
        put(current, changed, "mm");
        down[before] = changed + " mm";
        down[current] = kNothing;
      }
      for (const std::string& name : kind.cleared) {
        put(name, any(), "mm");
        down[name] = kNothing;
      }

      EXPECT_EQ(Convert(p, 1), 1);
      EXPECT_EQ(State(p), "1.0 V");
      for (const auto& [name, text] : down) EXPECT_EQ(GetParam(p, name.c_str()), text) << name;
    }
  }
}

TEST_F(ConversionTest, NothingToConvert) {
  const std::string current = Make("SPRING", 2, 1, "V");
  EXPECT_EQ(Convert(current, 0), 1);
  EXPECT_EQ(Calls(), (Lines{"p GetVersion", "p GetKeyWord Main|DataFile", "p CloseProtocol"}));
  EXPECT_EQ(State(current), "2.1 V");
  EXPECT_EQ(Convert(MakeProtocol("p", {}), 0), 0) << "no kind of calculation";

  const std::string old = Make("SPRING", 1, 0, "V");
  session.groupManager = true;
  EXPECT_EQ(Convert(old, 0), 1);
  EXPECT_EQ(Calls(), Lines{"p CloseProtocol"});
  session.groupManager = false;
  converter.reset();
  EXPECT_EQ(Convert(old, 0), 0);
  EXPECT_EQ(State(old), "1.0 V");
}

TEST_F(ConversionTest, TheModeIsATextOfTheUser) {
  const std::string path = GetModuleRegistryKey(true) + "VXcSE";
  const auto mode = [&] {
    return ProtocolConverter("Cad", SuiteFolder() + "\\none.ini", mapping).QmarMode();
  };
  RegistryKey user;
  RegistryKey machine;
  user.Create(platform::Hive::CurrentUser, path);
  machine.Create(platform::Hive::LocalMachine, path);
  machine.WriteString("QmarMode", "1");
  EXPECT_FALSE(mode());
  user.WriteDword("QmarMode", 1);
  EXPECT_FALSE(mode());
  user.WriteString("QmarMode", "1");
  EXPECT_TRUE(mode());
  user.DeleteValue("QmarMode");
  machine.DeleteValue("QmarMode");
}

TEST_F(ConversionTest, MinorStepsOfTheFirstGear) {
  struct Row {
    bool qmarMode;
    int from;
    int to;
    const char* before;
    const char* after;
  };
  const Row rows[] = {
      {false, 0, 1, "modela_fm", "MODELA_FP"},  {true, 0, 1, "MODELA_FM", "MODELA_FM"},
      {true, 0, 2, "MODELAI_FP", "MODELAI_FM"}, {false, 1, 0, "MODELB_FP", "MODELB_FM"},
      {true, 1, 0, "MODELB_FP", "MODELB_FP"},   {true, 1, 2, "MODELBI_FP", "MODELBI_FM"},
      {true, 2, 0, "MODELA_FM", "MODELA_FP"},   {false, 2, 0, "MODELA_FM", "MODELA_FM"},
      {false, 2, 1, "MODELA_FM", "MODELA_FP"},  {false, 0, 0, "MODELA_FM", "MODELA_FM"},
      {false, 0, 1, "MODELA_FP", "MODELA_FP"},  {false, 1, 2, "OTHER_FP", "OTHER_FP"},
  };
  const std::string keyPath = GetModuleRegistryKey(true) + "VXcSE";
  for (const Row& row : rows) {
    RegistryKey key;
    key.Create(platform::Hive::CurrentUser, keyPath);
    key.WriteString("QmarMode", row.qmarMode ? "1" : "0");
    converter = std::make_unique<ProtocolConverter>("Cad", SuiteFolder() + "\\none.ini", mapping);
    key.DeleteValue("QmarMode");
    const std::string p = Make("GEAR1", 2, row.from, row.before);
    VXProtocol protocol(protocols, p);
    Protocols newProtocols;
    EXPECT_EQ(converter->Convert(protocol, 2, newProtocols, row.to), 1);
    std::string viewKey;
    protocol.GetViewKey(viewKey);
    EXPECT_EQ(viewKey, row.after) << row.from << "->" << row.to;
  }
}

TEST_F(ConversionTest, ViewKeyIsMappedBySection) {
  UseMappingFile(
      "[Cad_SPRING_1->2]\r\nMODELA_old=NEWA\r\n[Cad_Default_1->2]\r\nMODELB=NEWB\r\n"
      "[Cad_GEAR1_2->2]\r\nMODELA_FM=MAPPED\r\n");
  const std::string p = Make("KEELDATA|SPRING", 1, 0, "modela");
  EXPECT_EQ(Convert(p, 0), 1);
  EXPECT_EQ(State(p), "2.0 NEWA");
  EXPECT_EQ(Get(p, "Main", "View"), "NEWA");
  const std::string unmapped = Make("SPRING", 1, 0, "MODELA_old_er");
  EXPECT_EQ(Convert(unmapped, 0), 1);
  EXPECT_EQ(State(unmapped), "2.0 MODELA_old_er");

  // A minor step is mapped with the step of the majors. The table is then the gears', for all.
  const std::string gear = Make("GEAR1", 2, 1, "MODELA_FP");
  EXPECT_EQ(Convert(gear, 0), 1);
  EXPECT_EQ(State(gear), "2.1 MAPPED");
  const std::string later = Make("SPRING", 1, 0, "MODELA");
  EXPECT_EQ(Convert(later, 0), 1);
  EXPECT_EQ(State(later), "2.0 MAPPED");

  UseMappingFile("[Cad_Default_1->2]\r\nMODELB=NEWB\r\n");
  const std::string byDefault = Make("SPRING", 1, 0, "MODELB");
  EXPECT_EQ(Convert(byDefault, 0), 1);
  EXPECT_EQ(State(byDefault), "2.0 NEWB");
}

TEST_F(ConversionTest, EntryWithoutAValueStopsTheLoading) {
  UseMappingFile("[Cad_SPRING_1->2]\r\nMODELA=NEWA\r\nMODELB=\r\n");
  const std::string p = Make("SPRING", 1, 0, "MODELA");
  EXPECT_EQ(Convert(p, 0), 1);
  EXPECT_EQ(State(p), "2.0 MODELA");
}

TEST_F(ConversionTest, LongSectionsAndValuesAreReadWhole) {
  std::string file = "[Cad_SPRING_1->2]\r\n";
  for (int i = 0; i < 300; ++i) file += "KEY" + std::to_string(i) + "=V\r\n";
  const std::string longKey(1500, 'x');
  UseMappingFile(file + "LAST=" + longKey + "\r\n");
  const std::string p = Make("SPRING", 1, 0, "LAST");
  EXPECT_EQ(Convert(p, 0), 1);
  EXPECT_EQ(State(p), "2.0 " + longKey);
}

TEST_F(ConversionTest, OneProtocolBecomesSeveralViews) {
  UseMappingFile("[Cad_SPRING_1->2]\r\nMODELA=MODELA_FM,MODELA_FP,SIDE\r\n");
  const std::string p = Make("SPRING", 1, 0, "MODELA", {{"Data", "d", "1", "mm"}});
  {
    VXProtocol protocol(protocols, p);
    Protocols newProtocols;
    EXPECT_EQ(converter->Convert(protocol, 0, newProtocols, 0), 3);
    EXPECT_TRUE(protocol.IsReady());
    ASSERT_EQ(newProtocols.size(), 2u);
    std::string value;
    std::string unit;
    EXPECT_TRUE(protocol.GetViewKey(value)) << "open again";
    EXPECT_TRUE(newProtocols[0]->GetViewKey(value));
    EXPECT_EQ(value, "MODELA_FP");
    EXPECT_TRUE(newProtocols[1]->GetKeyWord("Main", "View", value));
    EXPECT_EQ(value, "SIDE");
    EXPECT_TRUE(newProtocols[1]->GetDataParam("d", value, unit));
    EXPECT_EQ(value + unit, "1mm");
  }
  EXPECT_EQ(State(p), "2.0 MODELA_FM");
}

}  // namespace
}  // namespace quillmar::test
