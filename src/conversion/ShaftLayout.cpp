#include "conversion/ShaftLayout.h"

#include <algorithm>
#include <iterator>

namespace quillmar::shaft {

// clang-format off

const char* const kFieldNames[kFields] = {
    "d",
    "l",
    "s1",
    "s2",
    "s1add",
    "s2add",
    "drazka",
    "LR",
    "MLL",
    "NBB",
    "XHH",
    "DXR",
    "UNB",
    "POT",
    "HBZ",
    "PPO",
    "Nm",
    "Nt",
    "s1R",
    "s2R",
};

namespace {

constexpr CommonVariable kCommon[] = {
    {{"d", Field::D}, Group::Body},
    {{"l", Field::L}, Group::Body},
    {{"#spi1Add", Field::S1Add}, Group::Ends},
    {{"#spi2Add", Field::S2Add}, Group::Ends},
    {{"s1", Field::S1}, Group::Ends},
    {{"s2", Field::S2}, Group::Ends},
    {{"s1r", Field::S1R}, Group::Ends},
    {{"s2r", Field::S2R}, Group::Ends},
    {{"Nt", Field::Nt}, Group::Body},
    {{"#spiNm", Field::Nm}, Group::Body},
};

constexpr Variable kSnapRing[] = {
    {"RR_LR", Field::Lr},
    {"RR_M", Field::Mll},
    {"RR_N", Field::Nbb},
    {"RR_LF", Field::Ppo},
    {"RR_d1", Field::Dxr},
};

constexpr Variable kKeyway[] = {
    {"KEY_LR", Field::Lr},
    {"KEY_L", Field::Mll},
    {"KEY_B", Field::Nbb},
    {"KEY_T", Field::Xhh},
    {"KEY_X", Field::Dxr},
    {"KEY_n", Field::Pot},
};

constexpr Variable kThread[] = {
    {"LW_LR", Field::Lr},
    {"LW_L", Field::Mll},
    {"LW_B", Field::Nbb},
    {"LW_T", Field::Xhh},
    {"LW_R", Field::Dxr},
    {"LW_LZ", Field::Hbz},
    {"LW_LF", Field::Ppo},
    {"LW_TT", Field::Pot},
    {"LW_TP", kPitchField},
};

constexpr Variable kCone[] = {
    {"CONE_d1", Field::Mll},
};

constexpr Variable kGrooveA[] = {
    {"NA_b", Field::Mll},
    {"NA_h", Field::Dxr},
    {"NA_R", Field::Xhh},
    {"NA_b1", Field::Nbb},
    {"NA_add", Field::Ppo},
};

constexpr Variable kGrooveB[] = {
    {"NB_b", Field::Mll},
    {"NB_h", Field::Dxr},
    {"NB_R", Field::Xhh},
    {"NB_add", Field::Ppo},
};

constexpr Variable kGrooveD[] = {
    {"ND_LR", Field::Lr},
    {"ND_L", Field::Mll},
    {"ND_L", Field::Nbb},
    {"ND_h", Field::Dxr},
    {"ND_R", Field::Xhh},
    {"ND_add", Field::Ppo},
};

constexpr Variable kGrooveF[] = {
    {"NF_b", Field::Mll},
    {"NF_h", Field::Dxr},
    {"NF_R", Field::Xhh},
    {"NF_b1", Field::Nbb},
    {"NF_a", Field::Unb},
    {"NF_h1", Field::Hbz},
    {"NF_add", Field::Ppo},
};

constexpr Variable kGrooveG[] = {
    {"NG_b", Field::Mll},
    {"NG_h", Field::Dxr},
    {"NG_R", Field::Xhh},
    {"NG_a", Field::Unb},
    {"NG_add", Field::Ppo},
};

// The last name is spelt as the calculation spells it.
constexpr Variable kGrooveDA[] = {
    {"NDA_b", Field::Mll},
    {"NDA_h", Field::Dxr},
    {"NDA_R", Field::Xhh},
    {"NDA_b2", Field::Hbz},
    {"NDA_a", Field::Unb},
    {"PNDA_add", Field::Ppo},
};

constexpr Variable kGrooveDB[] = {
    {"NDB_b", Field::Mll},
    {"NDB_h", Field::Dxr},
    {"NDB_R", Field::Xhh},
    {"NDB_b1", Field::Nbb},
    {"NDB_a", Field::Unb},
    {"NDB_b2", Field::Hbz},
    {"NDB_add", Field::Ppo},
};

constexpr Variable kHole[] = {
    {"HOLE_LR", Field::Lr},
    {"HOLE_D", Field::Mll},
    {"HOLE_Z", Field::Xhh},
    {"HOLE_L", Field::Nbb},
};

constexpr Variable kRecessA[] = {
    {"RNa_LR", Field::Lr},
    {"RNa_L", Field::Mll},
    {"RNa_R", Field::Nbb},
    {"RNa_H", Field::Xhh},
};

constexpr Variable kRecessB[] = {
    {"RNb_LR", Field::Lr},
    {"RNb_L", Field::Mll},
    {"RNb_R", Field::Dxr},
    {"RNb_H", Field::Xhh},
};

constexpr Variable kSpline[] = {
    {"Pr_n", Field::Mll},
    {"Pr_R", Field::Xhh},
    {"Pr_X", Field::Nbb},
};

constexpr Variable kWrenchFlat[] = {
    {"WO_X", Field::Mll},
    {"WO_L", Field::Dxr},
};

// By type, from 1.
constexpr std::span<const Variable> kTypes[] = {
    {},
    kSnapRing,
    kKeyway,
    kThread,
    kCone,
    kGrooveA,
    kGrooveB,
    kGrooveD,
    kGrooveF,
    kGrooveG,
    kGrooveDA,
    kGrooveDB,
    kHole,
    kRecessA,
    kRecessB,
    kSpline,
    kWrenchFlat,
};
static_assert(std::size(kTypes) == kLastType);

constexpr Value kSupportValues[] = {
    {"PShaftID", "PShaftID"},
    {"PXrel", "PXrel"},
    {"PX", nullptr},
    {"PF0", nullptr},
    {"PF1", nullptr},
    {"PF2", nullptr},
    {"TypID", "TypID"},
    {"Pd", nullptr},
    {"Pdd", "Pdd"},
    {"Pb", "Pb"},
    {"Pp", "Pp"},
    {"axial", "axial"},
};

constexpr Value kLoadValues[] = {
    {"ZShaftID", "ZShaftID"},
    {"ZXrel", "ZXrel"},
    {"ZX", nullptr},
    {"ZF0", "ZF0"},
    {"ZF1", "ZF1"},
    {"ZF2", "ZF2"},
    {"ZM0", "ZM0"},
    {"ZM1", "ZM1"},
    {"ZM2", "ZM2"},
    {"ZQ0", "ZQ0"},
    {"ZQ1", "ZQ1"},
};

constexpr Value kMaterial[] = {
    {"mat", "material"},
    {"E", "E"},
    {"G", "G"},
    {"ro", "Ro"},
    {"Beta", "Beta"},
    {"ndx", "ndx"},
    {"Alfa", "Alfa"},
    {"ChkRo", "ChkRo"},
    {"ChkBeta", "ChkBeta"},
};

}  // namespace

// clang-format on

const NumberedList kSupports{"#spinSupports", "npodpor", kSupportValues};
const NumberedList kLoads{"#spinForces", "nzat", kLoadValues};

std::span<const CommonVariable> CommonVariables() { return kCommon; }

std::span<const Variable> VariablesOfType(int type) {
  const int row = std::clamp(type, kFirstType, kLastType) - kFirstType;
  return kTypes[static_cast<std::size_t>(row)];
}

std::span<const Value> MaterialValues() { return kMaterial; }

}  // namespace quillmar::shaft
