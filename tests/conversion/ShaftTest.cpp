// Shaft protocols between their two layouts. What belongs together is written here a second time,
// so that a slip in the module's tables is seen.
#include <random>
#include <sstream>

#include "ShaftWorld.h"

namespace quillmar::test {
namespace {

using testing::IsSupersetOf;

const char* const kCommon =
    "d=d l=l #spi1Add=s1add #spi2Add=s2add s1=s1 s2=s2 s1r=s1R s2r=s2R Nt=Nt #spiNm=Nm";

// By type, from 1. What a type does not name is not carried over.
const char* const kTypes[] = {
    "",
    "RR_LR=LR RR_M=MLL RR_N=NBB RR_LF=PPO RR_d1=DXR",
    "KEY_LR=LR KEY_L=MLL KEY_B=NBB KEY_T=XHH KEY_X=DXR KEY_n=POT",
    "LW_LR=LR LW_L=MLL LW_B=NBB LW_T=XHH LW_R=DXR LW_LZ=HBZ LW_LF=PPO LW_TT=POT LW_TP=UNB",
    "CONE_d1=MLL",
    "NA_b=MLL NA_h=DXR NA_R=XHH NA_b1=NBB NA_add=PPO",
    "NB_b=MLL NB_h=DXR NB_R=XHH NB_add=PPO",
    "ND_LR=LR ND_L=NBB ND_h=DXR ND_R=XHH ND_add=PPO",
    "NF_b=MLL NF_h=DXR NF_R=XHH NF_b1=NBB NF_a=UNB NF_h1=HBZ NF_add=PPO",
    "NG_b=MLL NG_h=DXR NG_R=XHH NG_a=UNB NG_add=PPO",
    "NDA_b=MLL NDA_h=DXR NDA_R=XHH NDA_b2=HBZ NDA_a=UNB PNDA_add=PPO",
    "NDB_b=MLL NDB_h=DXR NDB_R=XHH NDB_b1=NBB NDB_a=UNB NDB_b2=HBZ NDB_add=PPO",
    "HOLE_LR=LR HOLE_D=MLL HOLE_Z=XHH HOLE_L=NBB",
    "RNa_LR=LR RNa_L=MLL RNa_R=NBB RNa_H=XHH",
    "RNb_LR=LR RNb_L=MLL RNb_R=DXR RNb_H=XHH",
    "Pr_n=MLL Pr_R=XHH Pr_X=NBB",
    "WO_X=MLL WO_L=DXR",
};
constexpr int kEqualWidthGroove = 8;

const char* const kAllFields =
    "d l s1 s2 s1add s2add LR MLL NBB XHH DXR UNB POT HBZ PPO Nm Nt s1R s2R";
const char* const kSupportNames = "PShaftID PXrel TypID Pdd Pb Pp axial";
const char* const kLoadNames = "ZShaftID ZXrel ZF0 ZF1 ZF2 ZM0 ZM1 ZM2 ZQ0 ZQ1";
const char* const kMaterial =
    "E=E G=G ro=Ro Beta=Beta ndx=ndx Alfa=Alfa ChkRo=ChkRo ChkBeta=ChkBeta";

// current=old, or a name that both have.
struct Pair {
  std::string current;
  std::string old;
};

std::vector<Pair> Pairs(const std::string& list) {
  std::vector<Pair> pairs;
  std::istringstream words(list);
  for (std::string word; words >> word;) {
    const auto sign = word.find('=');
    pairs.push_back(sign == std::string::npos ? Pair{word, word}
                                              : Pair{word.substr(0, sign), word.substr(sign + 1)});
  }
  return pairs;
}

std::string Numbered(const std::string& name, int number) {
  return name + "_" + std::to_string(number);
}

// A random shaft of the older layout; beside it the names of the values in both layouts, and what
// comes back when it went up and down.
class RandomShaft {
 public:
  explicit RandomShaft(unsigned seed) : random(seed) {
    const int elements = 1 + Below(6);
    before["ElNum"] = back["ElNum"] = std::to_string(elements) + " ND";
    for (int i = 1; i <= elements; ++i) AddElement(i);
    AddRows("npodpor", kSupportNames, Below(4));
    AddRows("nzat", kLoadNames, Below(4));
    before["material"] = back["material"] = std::to_string(Below(9)) + " ND";
    pairs.push_back({"mat", "material"});
    for (const Pair& pair : Pairs(kMaterial)) Carry(pair.current, pair.old);
  }

  Values before;
  Values back;
  std::vector<Pair> pairs;

  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

 private:
  std::string Any() {
    const char* units[] = {"mm", "in", "ND"};
    return std::to_string(1 + Below(9999)) + "." + std::to_string(Below(100)) + " " +
           units[Below(3)];
  }

  void Carry(const std::string& current, const std::string& old) {
    before[old] = back[old] = Any();
    pairs.push_back({current, old});
  }

  void AddElement(int number) {
    const int given = Below(20);  // 0, 18 and 19 are no types
    const int type = given >= 1 && given <= 17 ? given : 1;
    for (const Pair& field : Pairs(kAllFields)) before[Numbered(field.old, number)] = Any();
    before[Numbered("drazka", number)] = std::to_string(given) + " ND";
    back[Numbered("drazka", number)] = std::to_string(type) + " ND";
    for (const char* list : {kCommon, kTypes[type - 1]}) {
      for (const Pair& pair : Pairs(list)) {
        Carry(Numbered(pair.current, number), Numbered(pair.old, number));
      }
    }
    if (type == kEqualWidthGroove) {
      back[Numbered("MLL", number)] = back[Numbered("NBB", number)];
    }
  }

  void AddRows(const std::string& countName, const std::string& names, int count) {
    before[countName] = back[countName] = std::to_string(count) + " ND";
    for (int i = 0; i < count; ++i) {
      for (const Pair& pair : Pairs(names)) Carry(Numbered(pair.old, i), Numbered(pair.old, i));
    }
  }

  std::mt19937 random;
};

class ShaftConversionTest : public ShaftWorld {};

TEST_F(ShaftConversionTest, WhatGoesUpComesDownAgain) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    RandomShaft shaft(seed);
    const std::string id = Make("KEELDATA|Shaft2", 1, shaft.before);
    Convert(protocols, id, 0);
    ASSERT_EQ(MajorOf(id), 2);
    const Values current = Read(id);
    {
      VXProtocol protocol(protocols, id);
      for (const Pair& pair : shaft.pairs) {
        ASSERT_EQ(current.count(Key(pair.current)), 1u) << pair.current;
        EXPECT_EQ(current.at(Key(pair.current)), shaft.back[pair.old]) << pair.current;
      }
      // Nothing may be taken from what is left of the older layout.
      for (const auto& value : shaft.before) {
        const std::string& name = value.first;
        const bool isShared =
            std::any_of(shaft.pairs.begin(), shaft.pairs.end(),
                        [&](const Pair& pair) { return Key(pair.current) == Key(name); });
        if (!isShared) protocol.PutDataParam(name, "", "");
      }
      for (int i = 0; i < 8; ++i) {
        const Pair& pair =
            shaft
                .pairs[static_cast<std::size_t>(shaft.Below(static_cast<int>(shaft.pairs.size())))];
        const std::string changed = std::to_string(10000 + i) + " mm";
        if (pair.current.starts_with("ND_L_")) shaft.back["MLL_" + pair.old.substr(4)] = changed;
        shaft.back[pair.old] = changed;
        Put(protocol, pair.current, changed);
      }
    }
    Convert(protocols, id, 1);
    ASSERT_EQ(MajorOf(id), 1);
    const Values down = Read(id);
    EXPECT_THAT(down, IsSupersetOf(ByKey(shaft.back)));
    for (const Pair& field : Pairs(kAllFields)) {
      const std::string name = field.old + "_1";
      EXPECT_EQ(down.count(Key(name)), shaft.back.count(name))
          << name << " does not belong to the type";
    }
  }
}

TEST_F(ShaftConversionTest, ValuesThatAreMadeAndNotCarried) {
  const std::string id = Make("SHAFT", 1,
                              {{"ElNum", "6 ND"},
                               {"drazka_1", "25 ND"},
                               {"LR_1", "5 mm"},
                               {"drazka_3", "2 ND"},
                               {"LR_3", "12 mm"},
                               {"MLL_3", "1.5 mm"},
                               {"drazka_4", "4 ND"},
                               {"UNB_4", "2 mm"},
                               {"drazka_5", "4 ND"},
                               {"UNB_5", "0.05 in"},
                               {"drazka_6", "8 ND"},
                               {"MLL_6", "1 mm"},
                               {"NBB_6", "2 mm"},
                               {"npodpor", "1 ND"},
                               {"TypID_0", "3 ND"},
                               {"nzat", "1 ND"},
                               {"material", "7.9 x"},
                               {"Ro", "7850 kg"}});
  Convert(protocols, id, 0);
  EXPECT_THAT(Read(id), IsSupersetOf(ByKey({{"#spiCount", "6 ND"},
                                            {"#spiType_1", "1 ND"},
                                            {"#spiType_2", "1 ND"},
                                            {"#spiType_3", "2 ND"},
                                            {"RR_LR_3", "12 mm"},
                                            {"RR_M_3", "1.5 mm"},
                                            {"LW_TPI_4", "0.019785039 ND"},
                                            {"LW_TPI_5", "20 ND"},
                                            {"ND_L_6", "2 mm"},
                                            {"#spiAct", "1 ND"},
                                            {"mat", "7 ND"},
                                            {"ro", "7850 kg"},
                                            {"#spinSupports", "1 ND"},
                                            {"TypID_0", "3 ND"},
                                            {"#spinForces", "1 ND"}})));
  for (const char* empty : {"RR_N_3", "d_2", "PX_0", "PF2_0", "Pd_0", "ZX_0", "ChkBeta"}) {
    EXPECT_EQ(GetParam(id, empty), " ") << empty;
  }
  EXPECT_EQ(GetParam(id, "RR_LR_1"), "(none)");
  EXPECT_EQ(Get(id, "Synchronize", "ChangedVars"), "");
  EXPECT_EQ(Get(id, "Vexteron", "Dynamic"), "1");
  EXPECT_EQ(Get(id, "Dynamic", "DriverList"),
            "Element_1,Element_2,Element_3,Element_4,Element_5,Element_6");
  EXPECT_EQ(Get(id, "Dynamic", "Element_3"), "2.wmf,#spiType_3");
  EXPECT_EQ(Get(id, "Dynamic", "A1_3"), "d_3,l_3,Nt_3,#spiNm_3");
  EXPECT_EQ(Get(id, "Dynamic", "A2_3"), "#spi1Add_3,#spi2Add_3,s1_3,s2_3,s1r_3,s2r_3");
  EXPECT_EQ(Get(id, "Dynamic", "A3_6"), "ND_LR_6,ND_L_6,ND_h_6,ND_R_6,ND_add_6");
}

TEST_F(ShaftConversionTest, WithoutElementsNothingIsRead) {
  for (const char* count : {"", "0 ND", "-3 ND", "none ND"}) {
    SCOPED_TRACE(count);
    Values values{{"npodpor", "1 ND"}, {"TypID_0", "3 ND"}, {"nzat", "2 ND"}, {"material", "7 ND"}};
    if (*count != '\0') values["ElNum"] = count;
    const std::string id = Make("SHAFT3", 1, values);
    Convert(protocols, id, 0);
    EXPECT_EQ(MajorOf(id), 2);
    EXPECT_THAT(Read(id), IsSupersetOf(ByKey({{"#spiCount", "0 ND"},
                                              {"#spiAct", "0 ND"},
                                              {"mat", "0 ND"},
                                              {"#spinSupports", "0 ND"},
                                              {"#spinForces", "0 ND"}})));
  }
}

TEST_F(ShaftConversionTest, ADamagedCountLeavesTheProtocolAsItIs) {
  const Values damaged[] = {{{"ElNum", "2000000000 ND"}},
                            {{"ElNum", "1 ND"}, {"npodpor", "32768 ND"}},
                            {{"ElNum", "1 ND"}, {"nzat", "99999999999 ND"}}};
  for (const Values& values : damaged) {
    const std::string id = Make("SHAFT", 1, values);
    TakeReports();
    Convert(protocols, id, 0);
    EXPECT_EQ(MajorOf(id), 1);
    EXPECT_EQ(Read(id), ByKey(values));
    EXPECT_THAT(TakeReports(), testing::ElementsAre(testing::HasSubstr("Count out of range: ")));
  }
}

TEST_F(ShaftConversionTest, TheVersionIsWrittenWithoutAStepToo) {
  for (const int target : {2, 3}) {
    const std::string id = Make("SHAFT", 2, {{"ElNum", "1 ND"}});
    Journal::Get().Reset();
    Convert(protocols, id, target);
    EXPECT_EQ(MajorOf(id), target);
    EXPECT_THAT(Journal::Get().LinesOf("p SetVersion"), testing::SizeIs(1));
    EXPECT_EQ(Read(id).count(Key("#spiCount")), 0u);
  }
}

}  // namespace
}  // namespace quillmar::test
