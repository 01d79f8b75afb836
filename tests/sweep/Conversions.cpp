#include "Conversions.h"

#include "Steps.h"

namespace quillmar::test {
namespace {

// A value that a conversion will write over is read a second time when it cannot be read. When it
// is not there, it goes on at `onFailure`.
Procedure ReadTwice(const std::string& name, const std::string& onFailure = "") {
  Procedure first = Store("Com_GetDataParam " + name);
  first.front().onSuccess = "read";
  return Block({first, Store("Com_GetDataParam " + name, "", onFailure), Label("read")});
}

constexpr const char* kNotWritten = "Cannot write data param";

// What cannot be written ends the conversion, and the layout stays the old one.
Procedure WriteValue(const std::string& name) {
  return Store("Com_PutDataParam " + name, kNotWritten, "mass");
}

// What was not there may stay away.
Procedure WriteNothing(const std::string& name) {
  return Store("Com_PutDataParam " + name, kNotWritten);
}

Procedure WriteKey(const std::string& section, const std::string& keyword) {
  return PutKey(section, keyword, "mass");
}

using Names = std::initializer_list<std::string>;

Procedure ForEach(Names names, Procedure (*piece)(const std::string& name)) {
  Procedure steps;
  for (const std::string& name : names) steps = Joined({steps, piece(name)});
  return steps;
}

Procedure ReadMissing(const std::string& name) {
  return Joined(
      {Missing(Store("Com_GetDataParam " + name)), Missing(Store("Com_GetDataParam " + name))});
}

Procedure ReadElement() {
  return Joined({ReadTwice("d_1"), ReadTwice("l_1"),
                 ForEach({"s1_1", "s2_1", "s1add_1", "s2add_1"}, ReadMissing),
                 ReadTwice("drazka_1"),
                 ForEach({"LR_1", "MLL_1", "NBB_1", "XHH_1", "DXR_1", "UNB_1", "POT_1", "HBZ_1",
                          "PPO_1", "Nm_1", "Nt_1", "s1R_1", "s2R_1"},
                         ReadMissing)});
}

Procedure ReadSupport() {
  return Joined({ForEach({"PShaftID_0"}, ReadMissing), ReadTwice("PXrel_0"),
                 ForEach({"TypID_0", "Pdd_0", "Pb_0", "Pp_0", "axial_0"}, ReadMissing)});
}

Procedure ReadLoad() {
  return Joined(
      {ForEach({"ZShaftID_0", "ZXrel_0"}, ReadMissing), ReadTwice("ZF0_0"),
       ForEach({"ZF1_0", "ZF2_0", "ZM0_0", "ZM1_0", "ZM2_0", "ZQ0_0", "ZQ1_0"}, ReadMissing)});
}

Procedure ReadMaterial() {
  return ForEach({"material", "E", "G", "Ro", "Beta", "ndx", "Alfa", "ChkRo", "ChkBeta"},
                 ReadMissing);
}

Procedure WriteElement() {
  return Joined({WriteValue("#spiType_1"), WriteValue("d_1"), WriteValue("l_1"),
                 ForEach({"#spi1Add_1", "#spi2Add_1", "s1_1", "s2_1", "s1r_1", "s2r_1", "Nt_1",
                          "#spiNm_1", "RR_LR_1", "RR_M_1", "RR_N_1", "RR_LF_1", "RR_d1_1"},
                         WriteNothing)});
}

Procedure WriteMaterial() {
  return Joined(
      {WriteValue("mat"),
       ForEach({"E", "G", "ro", "Beta", "ndx", "Alfa", "ChkRo", "ChkBeta"}, WriteNothing)});
}

Procedure WriteSupport() {
  return Joined({ForEach({"PShaftID_0"}, WriteNothing), WriteValue("PXrel_0"),
                 ForEach({"PX_0", "PF0_0", "PF1_0", "PF2_0", "TypID_0", "Pd_0", "Pdd_0", "Pb_0",
                          "Pp_0", "axial_0"},
                         WriteNothing)});
}

Procedure WriteLoad() {
  return Joined(
      {ForEach({"ZShaftID_0", "ZXrel_0", "ZX_0"}, WriteNothing), WriteValue("ZF0_0"),
       ForEach({"ZF1_0", "ZF2_0", "ZM0_0", "ZM1_0", "ZM2_0", "ZQ0_0", "ZQ1_0"}, WriteNothing)});
}

}  // namespace

// One value moves to another name; what cannot be moved goes back.
Procedure ConvertGear() {
  return Block({ReadTwice("cas", "moved"), WriteValue("cas"),
                Store("Com_PutDataParam cs", kNotWritten, "back"), Jump("moved"),
                Named("back", WriteNothing("cas")), Jump("mass"),
                Named("moved", Store("Com_SetVersion 2|0", "", "mass", Effect::Any)),
                GetKey("Main", "DataFile")});
}

// A count that is not there is none; without elements nothing else is read. Where a count is lost
// at the second reading too, everything behind it is.
Procedure ConvertShaft() {
  return Block({ReadTwice("ElNum", "write"),
                ReadTwice("npodpor", "noSupports"),
                ReadTwice("nzat", "noLoads"),
                ReadElement(),
                ReadSupport(),
                ReadLoad(),
                Jump("material"),
                Label("noSupports"),
                ReadTwice("nzat"),
                ReadElement(),
                Jump("material"),
                Label("noLoads"),
                ReadElement(),
                ReadSupport(),
                Label("material"),
                ReadMaterial(),
                Label("write"),
                WriteKey("Synchronize", "ChangedVars"),
                WriteValue("#spiCount"),
                WriteElement(),
                WriteKey("Dynamic", "DriverList"),
                WriteKey("Vexteron", "Dynamic"),
                WriteValue("#spiAct"),
                WriteValue("#spiInsPtX"),
                WriteMaterial(),
                WriteValue("#spinSupports"),
                WriteSupport(),
                WriteValue("#spinForces"),
                WriteLoad(),
                WriteKey("Dynamic", "Element_1"),
                WriteKey("Dynamic", "A1_1"),
                WriteKey("Dynamic", "A2_1"),
                WriteKey("Dynamic", "A3_1"),
                Store("Com_SetVersion 2|0", "", "mass", Effect::Any),
                GetKey("Main", "DataFile")});
}

}  // namespace quillmar::test
