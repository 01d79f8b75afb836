// Conversions in whose middle the store fails: once, or from one call on. What must stand then is
// told in docs/architecture.md.
#include <set>

#include "../../sweep/FaultyCompanions.h"
#include "../ShaftWorld.h"

namespace quillmar::test {
namespace {

struct Road {
  const char* label;
  const char* dataFile;
  int from;
  int to;
  Values values;
};

const Road kRoads[] = {
    {"shaft up",
     "SHAFT",
     1,
     2,
     {{"ElNum", "1 ND"},
      {"drazka_1", "4 ND"},
      {"UNB_1", "2 mm"},
      {"d_1", "20 mm"},
      {"npodpor", "1 ND"},
      {"PXrel_0", "5 mm"},
      {"nzat", "1 ND"},
      {"ZF1_0", "100 N"},
      {"material", "3 ND"},
      {"E", "210000 MPa"},
      {"Ro", "7850 kg"}}},
    {"shaft down",
     "SHAFT",
     2,
     1,
     {{"#spiCount", "1 ND"},
      {"#spiType_1", "2 ND"},
      {"RR_M_1", "1 mm"},
      {"d_1", "20 mm"},
      {"#spinSupports", "1 ND"},
      {"PXrel_0", "5 mm"},
      {"mat", "3 ND"},
      {"ro", "7850 kg"}}},
    {"third gear up", "GEAR3", 1, 2, {{"has", "1 mm"}, {"cas", "2 mm"}}},
    {"third gear down",
     "GEAR3",
     2,
     1,
     {{"ha*", "1 mm"}, {"c*", "2 mm"}, {"dw1", "3 mm"}, {"sigmaF", "4 MPa"}}},
    {"second gear up", "GEAR2", 1, 2, {{"cas", "0.25 mm"}}},
    {"second gear down", "GEAR2", 2, 1, {{"cs", "0.25 mm"}, {"snm1", "1 mm"}, {"Fa2", "9 N"}}},
    {"spring down", "SPRING", 2, 1, {{"xxDimIncrement", "1 mm"}, {"d", "2 mm"}}},
    {"first gear up", "GEAR1", 1, 2, {{"IT", "7.5 ND"}}},
    {"first gear down",
     "GEAR1",
     2,
     1,
     {{"stupenPresnosti", "7 ND"}, {"gama", "1 deg"}, {"Fa2", "9 N"}}},
};

class InterruptionTest : public ShaftWorld {
 protected:
  InterruptionTest()
      : faulty(FaultyStorage(protocols.storage)),
        context{faulty, protocols.links, errors, protocols.activator} {}
  ~InterruptionTest() override { Calls::Get().Begin(0, Mode::Once); }

  // Converts a new protocol of the road while the store fails; the failing call, empty when the
  // conversion has fewer calls.
  std::string Disturb(const Road& road, int failing, Mode mode) {
    id = Make(road.dataFile, road.from, road.values);
    Calls::Get().Begin(failing, mode);
    Convert(context, id, road.to);
    const auto& lines = Calls::Get().Lines();
    const auto index = static_cast<std::size_t>(failing) - 1;
    const std::string line = index < lines.size() ? lines[index] : "";
    Calls::Get().Begin(0, Mode::Once);
    return line;
  }

  // Values that differ from those of an undisturbed conversion.
  std::vector<std::string> Differences(const Values& whole) {
    const Values values = Read(id);
    std::vector<std::string> names;
    for (const auto& [name, text] : whole) {
      const auto found = values.find(name);
      if (found == values.end() || found->second != text) names.push_back(name);
    }
    for (const auto& [name, text] : values) {
      if (whole.count(name) == 0) names.push_back(name);
    }
    return names;
  }

  StorageTable faulty;
  ProtocolContext context;
  std::string id;
};

// Where the second write of a move fails, and the writing back too, that one value is gone.
bool IsBetweenTheWritesOfAMove(const Road& road, const std::string& call, Mode mode) {
  static const std::set<std::string> kMovedUp = {"ha*", "c*", "cs"};
  static const std::set<std::string> kMovedDown = {"has", "cas", "IT"};
  const std::string write = "Com_PutDataParam ";
  return mode == Mode::FromThenOn && call.starts_with(write) &&
         (road.to == 2 ? kMovedUp : kMovedDown).count(call.substr(write.size())) != 0;
}

TEST_F(InterruptionTest, WhatWasInterruptedIsWholeOrCanBeDoneAgain) {
  for (const Road& road : kRoads) {
    id = Make(road.dataFile, road.from, road.values);
    Convert(protocols, id, road.to);
    const Values whole = Read(id);
    ASSERT_EQ(MajorOf(id), road.to);
    for (const Mode mode : {Mode::Once, Mode::FromThenOn}) {
      for (int failing = 1;; ++failing) {
        const std::string call = Disturb(road, failing, mode);
        if (call.empty()) break;
        SCOPED_TRACE(std::string(road.label) + ", failing " + std::to_string(failing) + ": " +
                     call + (mode == Mode::Once ? ", once" : ", from then on"));
        if (MajorOf(id) == road.to) {
          EXPECT_THAT(Differences(whole), testing::IsEmpty());
          continue;
        }
        EXPECT_EQ(MajorOf(id), road.from);
        Convert(protocols, id, road.to);
        EXPECT_EQ(MajorOf(id), road.to);
        const std::size_t lost = IsBetweenTheWritesOfAMove(road, call, mode) ? 1 : 0;
        EXPECT_THAT(Differences(whole), testing::SizeIs(lost));
      }
    }
  }
}

TEST_F(InterruptionTest, AnInterruptedMappingLeavesTheProtocolConverted) {
  const std::string ini =
      WriteSuiteFile("ProtConv.ini", "[Cad_GEAR3_1->2]\r\nMODELA=NEWA,NEWB\r\n");
  const Road& road = kRoads[2];
  for (const Mode mode : {Mode::Once, Mode::FromThenOn}) {
    for (int failing = 1;; ++failing) {
      mapping = {};
      converter = std::make_unique<ProtocolConverter>("Cad", ini, mapping);
      const std::string call = Disturb(road, failing, mode);
      if (call.empty()) break;
      SCOPED_TRACE(call);
      VXProtocol protocol(protocols, id);
      std::string viewKey;
      EXPECT_TRUE(protocol.GetViewKey(viewKey));
      EXPECT_TRUE(viewKey == "MODELA" || viewKey == "NEWA") << viewKey;
      if (viewKey == "NEWA") {
        EXPECT_EQ(MajorOf(id), 2);
      }
    }
  }
}

}  // namespace
}  // namespace quillmar::test
