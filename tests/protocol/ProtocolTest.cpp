// Life of a protocol, its data, and the conversions of its fixed keys.
#include "ProtocolFixture.h"

#include <initializer_list>
#include <utility>

namespace quillmar {
namespace {

class ProtocolTest : public ProtocolFixture {};

TEST_F(ProtocolTest, WhatWasWrittenIsThereAfterClosing) {
  std::string id;
  {
    VXProtocol protocol(context);
    ASSERT_EQ(protocol.CreateNew(), 1);
    id = protocol.GetProtocolID();
    EXPECT_LE(id.size(), 25u);
    EXPECT_EQ(id.find(' '), std::string::npos);
    EXPECT_TRUE(protocol.PutKeyWord("Main", "DataFile", "KEELDATA|SHAFT"));
    EXPECT_TRUE(protocol.PutDataParam("d_1", "12,5", "mm"));
    EXPECT_TRUE(protocol.SetVersion(1, 3));
  }
  EXPECT_EQ(VXProtocol::ProtocolExists(context, id), QM_PROTOCOL_CLOSED);
  VXProtocol protocol(context, id);
  EXPECT_EQ(VXProtocol::ProtocolExists(context, id), QM_PROTOCOL_OPEN);
  std::string value;
  std::string unit;
  EXPECT_TRUE(protocol.GetDataFileName(value));
  EXPECT_EQ(value, "SHAFT");
  EXPECT_TRUE(protocol.GetDataParam("d_1", value, unit));
  EXPECT_EQ(value + unit, "12,5mm");
  int major = 0;
  int minor = 0;
  EXPECT_TRUE(protocol.GetVersion(major, minor));
  EXPECT_EQ(major * 10 + minor, 13);
}

TEST_F(ProtocolTest, AnObjectThatIsNotReadyReportsAndEmptiesItsOutputs) {
  std::string value = "before";
  {
    VXProtocol protocol(context);
    EXPECT_FALSE(protocol.GetKeyWord("Main", "DataFile", value));
    EXPECT_EQ(value, "");
    EXPECT_FALSE(protocol.Erase());
  }
  EXPECT_EQ(Reports(), Messages(3, "Protocol is not ready"));
}

TEST_F(ProtocolTest, IdentifiersThatDoNotFitAreRefused) {
  VXProtocol protocol(context, std::string(300, 'P'));
  EXPECT_FALSE(protocol.IsReady());
  EXPECT_EQ(Reports(), Messages{"Cannot open protocol."});
}

TEST_F(ProtocolTest, AnAttachedProtocolIsNotClosed) {
  VXProtocol owner(context, Stored());
  const std::string id = owner.GetProtocolID();
  {
    VXProtocol guest(context);
    EXPECT_TRUE(guest.Attach(id));
    EXPECT_TRUE(guest.PutCadx("FromCad", "1"));
  }
  EXPECT_EQ(VXProtocol::ProtocolExists(context, id), QM_PROTOCOL_OPEN);
  std::string value;
  EXPECT_TRUE(owner.GetCadx("FromCad", value));
}

TEST_F(ProtocolTest, ErasingLeavesTheObjectNotReady) {
  VXProtocol protocol(context, Stored());
  const std::string id = protocol.GetProtocolID();
  EXPECT_TRUE(protocol.Erase());
  EXPECT_EQ(VXProtocol::ProtocolExists(context, id), QM_PROTOCOL_MISSING);
  EXPECT_EQ(protocol.GetProtocolID(), "");
  EXPECT_FALSE(protocol.IsReady());
}

TEST_F(ProtocolTest, CopiesByTheLibraryAndWithoutIt) {
  VXProtocol source(context, Stored());
  source.PutKeyWord("Object", "ProtID", "P1");
  source.PutDataParam("mass", "2.5", "kg");
  StorageTable withoutCopy = libraries.Storage();
  withoutCopy.Com_CopyProtocol.pointer = nullptr;
  const ProtocolContext poor{withoutCopy, libraries.Links(), errors, activator};
  for (const ProtocolContext* where :
       std::initializer_list<const ProtocolContext*>{&std::as_const(context), &poor}) {
    VXProtocol copy(*where);
    ASSERT_TRUE(copy.Copy(source.GetProtocolID()));
    EXPECT_NE(copy.GetProtocolID(), source.GetProtocolID());
    std::string value;
    std::string unit;
    EXPECT_TRUE(copy.GetDataParam("mass", value, unit));
    EXPECT_EQ(value + unit, "2.5kg");
    EXPECT_TRUE(copy.GetKeyWord("Object", "ProtID", value));
  }
  Reports();
  VXProtocol copy(context);
  EXPECT_FALSE(copy.Copy("no such"));
  EXPECT_EQ(Reports(), Messages{"Cannot copy protocol."});
}

TEST_F(ProtocolTest, LongValuesComeBackWhole) {
  VXProtocol protocol(context, Stored());
  for (std::size_t length : {0u, 1u, 1022u, 1023u, 1024u, 2047u, 100000u}) {
    const std::string text(length, 'x');
    ASSERT_TRUE(protocol.PutKeyWord("Main", "Long", text));
    std::string value = "before";
    EXPECT_TRUE(protocol.GetKeyWord("Main", "Long", value));
    EXPECT_EQ(value, text) << length;
  }
  std::string value;
  std::string unit;
  ASSERT_TRUE(protocol.PutDataParam("p", "1", std::string(1500, 'u')));
  EXPECT_TRUE(protocol.GetDataParam("p", value, unit));
  EXPECT_EQ(value, "1");
  EXPECT_EQ(unit.size(), 1500u);
}

TEST_F(ProtocolTest, FailuresAreReportedOnceWithTheirMessage) {
  VXProtocol protocol(context, Stored());
  Reports();
  std::string text;
  std::string second;
  int number = 77;
  protocol.GetKeyWordInt("Main", "Missing", number);
  protocol.GetGlobalData("Missing", text);
  protocol.GetDataParam("Missing", text, second);
  protocol.GetDataItem(5, text, second, second);
  protocol.GetOneKey(9999, text, second);
  protocol.GetKeyCount("Nowhere");
  EXPECT_EQ(number, 77);
  EXPECT_EQ(Reports(), (Messages{"Cannot read from section Main, keyword Missing.",
                                 "Cannot read global data, item: Missing", "Cannot read data param",
                                 "Cannot read data item", "Cannot get one key 9999.",
                                 "Cannot read list key words from section Nowhere."}));
}

TEST_F(ProtocolTest, ValuesThatAreNoNumbersBecomeLinks) {
  VXProtocol protocol(context, Stored());
  EXPECT_TRUE(protocol.SetParam("length", "12,5", "mm"));
  EXPECT_EQ(protocol.GetLinksFromCount(true), 0);
  EXPECT_TRUE(protocol.SetParam("width", "D1/2", "mm"));
  EXPECT_EQ(protocol.GetLinksFromCount(true), 1);
  EXPECT_EQ(protocol.GetLinksFromCount(false), 0);
}

TEST_F(ProtocolTest, FixedKeysConvert) {
  VXProtocol protocol(context, Stored());
  EXPECT_EQ(protocol.GetScale(), 1.0);
  for (const auto& [stored, scale] : {std::pair{"0", 1.0}, {"-2", 1.0}, {"0.5", 0.5}, {"x", 1.0}}) {
    protocol.PutGlobalData("Scale", stored);
    EXPECT_EQ(protocol.GetScale(), scale) << stored;
  }
  EXPECT_EQ(protocol.GetUnitText(), "mm");
  protocol.PutGlobalData("UnitIsmm", "0");
  EXPECT_EQ(protocol.GetUnitText(), "in");
  EXPECT_TRUE(protocol.KeepsInfo());
  protocol.PutGlobalData("RemoveInfo", "1");
  EXPECT_FALSE(protocol.KeepsInfo());
  protocol.PutGlobalData("ReallyRemoveInfo", "0");
  EXPECT_TRUE(protocol.KeepsInfo());
  EXPECT_EQ(protocol.GetFromPin(), 0);
  EXPECT_EQ(protocol.GetNewView(), 0);
  protocol.PutKeyWord("Files", "DataFile", "CfgData|a|b");
  std::string text;
  EXPECT_TRUE(protocol.GetDataFileName(text));
  EXPECT_EQ(text, "a|b");
  EXPECT_FALSE(protocol.HasMcwData());
  protocol.PutKeyWord("MCWData", "MCWDataFile", "wbolcon");
  EXPECT_TRUE(protocol.HasMcwData());
  EXPECT_TRUE(protocol.SetDrawn(false));
  EXPECT_FALSE(protocol.GetCadx("FromCad", text));
  EXPECT_TRUE(protocol.SetDrawn(true));
  EXPECT_TRUE(protocol.GetCadx("FromCad", text));
}

TEST_F(ProtocolTest, TextsOfFixedKeysStandWhereTheCalculationsLookForThem) {
  struct Key {
    const char* section;
    const char* keyword;
    bool (VXProtocol::*get)(std::string&);
    bool (VXProtocol::*put)(TextRef);
  };
  VXProtocol protocol(context, Stored());
  Reports();
  for (const Key& key :
       {Key{"Globals", "Level", &VXProtocol::GetLevel, &VXProtocol::PutLevel},
        {"Globals", "Measure", &VXProtocol::GetMeasure, nullptr},
        {"Globals", "Unit", &VXProtocol::GetUnit, nullptr},
        {"Cadx", "PartName", &VXProtocol::GetPartName, &VXProtocol::PutPartName},
        {"Cadx", "DrawingName", &VXProtocol::GetDrawingName, &VXProtocol::PutDrawingName},
        {"View", "Data", &VXProtocol::GetViewData, &VXProtocol::PutViewData},
        {"View", "Driver", &VXProtocol::GetDriver, nullptr},
        {"View", "Description", &VXProtocol::GetViewDescription, nullptr}}) {
    const std::string section = key.section;
    const std::string keyword = key.keyword;
    SCOPED_TRACE(keyword);
    std::string text = "before";
    EXPECT_FALSE((protocol.*key.get)(text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(Reports(), Messages{section == "Globals" ? "Cannot read global data, item: " + keyword
                                                       : "Cannot read from section " + section +
                                                             ", keyword " + keyword + "."});
    const std::string value = "the " + keyword;
    EXPECT_TRUE(key.put ? (protocol.*key.put)(value)
                        : protocol.PutKeyWord(section, keyword, value));
    EXPECT_TRUE(protocol.GetKeyWord(section, keyword, text));
    EXPECT_EQ(text, value);
    EXPECT_TRUE((protocol.*key.get)(text));
    EXPECT_EQ(text, value);
  }
}

TEST_F(ProtocolTest, NumbersOfFixedKeysAreWrittenAsDecimals) {
  VXProtocol protocol(context, Stored());
  const auto stored = [&](const char* section, const char* keyword) {
    std::string text;
    protocol.GetKeyWord(section, keyword, text);
    return text;
  };
  protocol.PutGlobalData("FromPin", "1");
  protocol.PutGlobalData("ToPin", "-2");
  EXPECT_EQ(protocol.GetOrientPin(), 0);
  protocol.PutGlobalData("OrientPin", "3");
  EXPECT_EQ(protocol.GetFromPin(), 1);
  EXPECT_EQ(protocol.GetToPin(), -2);
  EXPECT_EQ(protocol.GetOrientPin(), 3);
  int number = 77;
  EXPECT_FALSE(protocol.IsVisible(number));
  EXPECT_EQ(number, 77);
  for (const bool visible : {true, false}) {
    EXPECT_TRUE(protocol.SetVisible(visible));
    EXPECT_EQ(stored("View", "Visibled"), visible ? "1" : "0");
    EXPECT_TRUE(protocol.IsVisible(number));
    EXPECT_EQ(number, visible ? 1 : 0);
  }
  EXPECT_FALSE(protocol.GetTypeOfPart(number));
  EXPECT_TRUE(protocol.SetTypeOfPart(10));
  EXPECT_EQ(stored("Globals", "TypeOfPart"), "10");
  EXPECT_EQ(protocol.IsChanged(), 0);
  EXPECT_TRUE(protocol.SetChanged(2));
  EXPECT_EQ(stored("Globals", "Changed"), "2");
  EXPECT_TRUE(protocol.SetNewView(-1));
  EXPECT_EQ(stored("Cadx", "NewView"), "-1");
  for (const auto& [scale, text] : {std::pair{1.0 / 3, "0.33333333"}, {2e9, "2e+09"}, {50, "50"}}) {
    EXPECT_TRUE(protocol.SetScale(scale));
    EXPECT_EQ(stored("Globals", "Scale"), text);
  }
}

// Nobody is told when they fail; the version does not even ask whether the object is ready.
TEST_F(ProtocolTest, KeysAndTheStandardFailWithoutAReport) {
  VXProtocol protocol(context, Stored());
  VXProtocol closed(context);
  std::string text;
  EXPECT_TRUE(protocol.PutStandard("DIN 743"));
  EXPECT_TRUE(protocol.PutPartKey("K1"));
  EXPECT_TRUE(protocol.GetStandard(text));
  EXPECT_EQ(text, "DIN 743");
  EXPECT_TRUE(protocol.GetPartKey(text));
  EXPECT_EQ(text, "K1");
  VXProtocol::EraseById(context, protocol.GetProtocolID());
  Reports();
  for (VXProtocol* gone : {&protocol, &closed}) {
    for (const auto read : {&VXProtocol::GetStandard, &VXProtocol::GetPartKey}) {
      text = "before";
      EXPECT_FALSE((gone->*read)(text));
      EXPECT_EQ(text, "");
    }
    EXPECT_FALSE(gone->PutStandard("ISO"));
    EXPECT_FALSE(gone->PutPartKey("K2"));
    EXPECT_EQ(Reports(), Messages(gone == &closed ? 4 : 0, "Protocol is not ready"));
    int number = 0;
    EXPECT_FALSE(gone->SetVersion(1, 0));
    EXPECT_FALSE(gone->GetVersion(number, number));
    EXPECT_EQ(Reports(), Messages());
  }
}

}  // namespace
}  // namespace quillmar
