// The document's file: every byte survives, a failed write changes nothing.
#include "CadAddin.h"
#include "drawboard/CodePage.h"
#include "drawboard/DriveFiles.h"
#include "platform/Files.h"

namespace {

std::string AllBytes() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

}  // namespace

TEST_F(CadAddin, EveryByteSurvivesTheDocument) {
  const std::string connection = Reference("P1", AllBytes());
  for (int byte = 1; byte < 256; ++byte) {
    if (byte == ',') continue;
    const std::string id = "B" + std::to_string(byte);
    const std::string value = std::string("x") + static_cast<char>(byte);
    char name[] = "Bom";
    ExtDataPair pair{name, const_cast<char*>(value.c_str())};
    ASSERT_EQ(cad.InsertParamPart(id.c_str(), "", ("name" + value + "," + value).c_str(),
                                  Reference(id, value).c_str(), 1, "", value.c_str(), &pair, 1),
              1)
        << byte;
  }
  ASSERT_EQ(cad.InsertCalculation("P1", connection.c_str(), "All"), 1);
  ASSERT_EQ(cad.Drawboard_NewDocument((folder + "\\Other.json").c_str(), "mm"), 1);
  ASSERT_EQ(cad.Drawboard_OpenDocument(document.c_str()), 1) << Messages();

  EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetProtocol("P1", t, s); }), connection);
  for (int byte = 1; byte < 256; ++byte) {
    if (byte == ',') continue;
    const std::string id = "B" + std::to_string(byte);
    const std::string value = std::string("x") + static_cast<char>(byte);
    const auto read = [&](auto function) {
      return Read([&](char* t, int* s) { return function(id.c_str(), t, s); });
    };
    EXPECT_EQ(read(cad.GetParameterList), "name" + value + "," + value) << byte;
    EXPECT_EQ(read(cad.GetProtocol), Reference(id, value)) << byte;
  }
}

TEST(CodePage, EveryByteComesBackAndForeignCharactersAreNoticed) {
  const std::string bytes = AllBytes();
  EXPECT_EQ(drawboard::FromUtf8(drawboard::ToUtf8(bytes)), bytes);
  EXPECT_EQ(drawboard::ToUtf8("\xB3\xF3\x9F\x80"), "łóź€");
  for (const char* text : {"\xCE\xB1", "\xE2\x82", "\xC0\x80", "\xF0\x9F\x98\x80", "\x80"}) {
    EXPECT_EQ(drawboard::FromUtf8(text), std::nullopt);
  }
}

TEST_F(CadAddin, AReopenedDocumentIsTheSame) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  ASSERT_EQ(cad.Drawboard_SetParameter("Wheel", "Thread", "M8"), 1);
  ASSERT_EQ(cad.ConnectProtocol("P1", Reference("F1").c_str()), 1);
  const double x[] = {0, 10, 0.1}, y[] = {0, 0, 1.0 / 3};
  ASSERT_EQ(cad.InsertCamPart("C1", 3, x, y, 2.5, "mm", Reference("C1").c_str(),
                              "<WORKSPACE>\\Cam.dbp", "Cam", nullptr, 0),
            1);
  ASSERT_EQ(cad.InsertNamedProtocol("N1", "Group", Reference("N1").c_str()), 1);
  ASSERT_EQ(cad.InsertFormat("", "F1", Reference("F1").c_str(), 1, "SP", 0.5), 1);
  ASSERT_TRUE(drawboard::WriteWholeFile(folder + "\\data.txt", std::string("a\0b", 3)));
  ASSERT_EQ(cad.GetFilesData((folder + "\\data.txt").c_str(), 11), 1);
  const auto before = Document();
  ASSERT_EQ(cad.Drawboard_OpenDocument(document.c_str()), 1) << Messages();
  EXPECT_EQ(Document(), before);
  // Also what no list shows: a former identity, and which parameters the CAD added.
  EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetProtocol("P1", t, s); }), Reference("F1"));
  ASSERT_EQ(cad.ChangeParamPart("F1", "", "*view*,M,d,90,b,20", Reference("F1").c_str(), 1, "", "",
                                nullptr, 0, 0),
            1);
  EXPECT_EQ(Object("Wheel")["parameters"]["Thread"], "M8");
  EXPECT_EQ(before["exchangedFiles"][0]["contents"], std::string("a\0b", 3));
}

TEST_F(CadAddin, ADamagedDocumentIsRefusedWithTheFieldThatIsWrong) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  const auto good = nlohmann::json::parse(*drawboard::ReadWholeFile(document));
  const auto with = [&](const char* pointer, const nlohmann::json& value) {
    auto changed = good;
    changed[nlohmann::json::json_pointer(pointer)] = value;
    return changed.dump();
  };
  const struct {
    std::string text;
    const char* expected;
  } cases[] = {
      {"no json", "not JSON"},
      {"[]", "no document"},
      {"{\"drawboard\": 2}", "another format"},
      {with("/unit", "ft"), "\"unit\""},
      {with("/objects/0/caption", 5), "\"objects[0].caption\""},
      {with("/objects/0/kind", "wheel"), "\"objects[0].kind\""},
      {with("/objects/0/parameters/d", 5), "\"objects[0].parameters.d\""},
      {with("/objects/0/caption", "\u03b1"), "Windows-1250"},
      {with("/objects", "none"), "\"objects\""},
  };
  for (const auto& each : cases) {
    const std::string path = folder + "\\Damaged.json";
    ASSERT_TRUE(drawboard::WriteWholeFile(path, each.text));
    cad.Drawboard_ClearMessages();
    EXPECT_EQ(cad.Drawboard_OpenDocument(path.c_str()), 0) << each.text;
    EXPECT_NE(Messages().find(each.expected), std::string::npos) << Messages();
  }
  EXPECT_EQ(Document()["name"], "Gearbox") << "the open document stays";
}

TEST_F(CadAddin, WhatCannotBeWrittenIsNotReportedAsDone) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  const auto before = Document();
  const auto wheel = drawboard::ReadWholeFile(folder + "\\Gearbox\\Wheel.dbp");
  // A folder stands where the next version of the document would be written first.
  ASSERT_TRUE(drawboard::MakeFolder(document + ".new\\x"));
  EXPECT_EQ(InsertWheel("P2", "<ASM>\\Pinion.dbp"), 0);
  EXPECT_NE(Messages().find("Cannot write the document"), std::string::npos);
  EXPECT_FALSE(quillmar::platform::FileExists(folder + "\\Gearbox\\Pinion.dbp"));
  EXPECT_EQ(cad.ChangeParamPart("P1", "", "*view*,M,d,7,b,7", Reference("P1").c_str(), 1,
                                "<ASM>\\Moved.dbp", "", nullptr, 0, 0),
            0);
  EXPECT_EQ(drawboard::ReadWholeFile(folder + "\\Gearbox\\Wheel.dbp"), wheel);
  EXPECT_FALSE(quillmar::platform::FileExists(folder + "\\Gearbox\\Moved.dbp"));
  EXPECT_EQ(Document(), before);

  ASSERT_TRUE(drawboard::EraseFolder(document + ".new"));
  EXPECT_EQ(InsertWheel("P2", "<ASM>\\Pinion.dbp"), 1);
}
