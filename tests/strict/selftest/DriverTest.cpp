// Recorded functions: journal, answers, checks, and the libraries that lack a function.
#include "selftest/StrictSet.h"

namespace quillmar::strict {
namespace {

class Driver : public StrictSet {
 protected:
  template <class Function>
  Function Bound(const char* name) {
    return reinterpret_cast<Function>(FunctionOf(ImageLibrary("Strictcad/Strictcad.dll"), name));
  }

  static std::vector<std::string> LastCall() {
    const int call = Core().Strict_CallCount() - 1;
    std::vector<std::string> shown{Core().Strict_CallFunction(call)};
    for (int i = 0; i < Core().Strict_CallArgumentCount(call); ++i) {
      shown.emplace_back(Core().Strict_CallArgument(call, i));
    }
    shown.push_back(std::to_string(Core().Strict_CallResult(call)));
    return shown;
  }

  using ReadList = int(QM_CDECL*)(const char*, char*, int*);
  ReadList readList = Bound<ReadList>("GetFeaturesState");
};

TEST_F(Driver, CallsAreRecordedWithAllArguments) {
  using InsertShaft = int(QM_CDECL*)(const char*, const char*, const char*, const char*,
                                     const char*, const char*, const ExtDataPair*, int);
  const auto insert = Bound<InsertShaft>("InsertShaft");
  char name[] = "N";
  char value[] = "V";
  const ExtDataPair pairs[] = {{name, value}, {name, name}};
  EXPECT_EQ(insert("P1", "", "*view*,v,d,1", "ref", "<ASM>\\s.prt", "Shaft", pairs, 2), 1);
  EXPECT_THAT(LastCall(), testing::ElementsAre("InsertShaft", "P1", "", "*view*,v,d,1", "ref",
                                               "<ASM>\\s.prt", "Shaft", "2", "N=V\nN=N\n", "1"));
  Core().Strict_SetAnswer("InsertShaft", "0");
  EXPECT_EQ(insert("P1", "", "", "", "", "", nullptr, 0), 0);
  EXPECT_THAT(Violations(), testing::IsEmpty());

  Core().Strict_SetAnswer("InsertShaft", nullptr);
  EXPECT_EQ(insert("P1", nullptr, "", "", "", "", nullptr, 0), 0);
  EXPECT_EQ(insert("P1", "", "", "", "", "", nullptr, 1), 0);
  const ExtDataPair half[] = {{name, nullptr}};
  EXPECT_EQ(insert("P1", "", "", "", "", "", half, 1), 0);
  EXPECT_THAT(Violations(), testing::ElementsAre("InsertShaft: null modelPath",
                                                 "InsertShaft: pairs counted, none given",
                                                 "InsertShaft: a pair with a null text"));
}

TEST_F(Driver, ListsAreHandedOutAtTheSecondCall) {
  Core().Strict_SetAnswer("GetFeaturesState.text", "a,1,");
  Core().Strict_SetAnswer("GetFeaturesState(P2).text", "b,0,c,1,");
  std::string text(65536, '\0');
  int size = 65535;
  EXPECT_EQ(readList("P1", text.data(), &size), 0);
  EXPECT_EQ(size, 4);
  EXPECT_EQ(readList("P1", text.data(), &size), 1);
  EXPECT_STREQ(text.c_str(), "a,1,");
  size = 65535;
  EXPECT_EQ(readList("P2", text.data(), &size), 0);
  EXPECT_EQ(size, 8);
  EXPECT_THAT(Violations(), testing::IsEmpty());
  size = 7;
  EXPECT_EQ(readList("P2", text.data(), &size), 0);
  EXPECT_THAT(Violations(), testing::ElementsAre(testing::HasSubstr("less than was asked for")));
}

TEST_F(Driver, ListBuffersWithoutRoomAndPlainFailure) {
  char text[2];
  int size = 0;
  EXPECT_EQ(readList("P1", text, &size), 0);
  EXPECT_THAT(Violations(), testing::ElementsAre(testing::HasSubstr("without room")));
  size = 1;
  EXPECT_EQ(readList("P1", text, &size), 1) << "an empty text needs no second call";
  Core().Strict_SetAnswer("GetFeaturesState", "0");
  size = 1;
  EXPECT_EQ(readList("P1", text, &size), 0);
  EXPECT_EQ(size, 0);
}

TEST_F(Driver, SelectionNamesThePartAndTheLengthOfItsReference) {
  using GetPart = int(QM_CDECL*)(char*, char*, int*);
  const auto getPart = Bound<GetPart>("GetPart");
  Core().Strict_SetAnswer("GetPart.partName", "Shaft:1");
  Core().Strict_SetAnswer("GetPart.text", "P1<@PID>");
  char name[1024];
  std::string text(65537, '\0');
  int size = 65536;
  EXPECT_EQ(getPart(name, text.data(), &size), 1);
  EXPECT_STREQ(name, "Shaft:1");
  EXPECT_EQ(size, 8);
}

TEST_F(Driver, NumbersComeFromTheAnswers) {
  QmWindow window = 1;
  const auto mainWindow = Bound<int(QM_CDECL*)(QmWindow*)>("GetMainHwnd");
  EXPECT_EQ(mainWindow(&window), 1);
  EXPECT_EQ(window, 0u);
  Core().Strict_SetAnswer("GetMainHwnd.window", "0x10020");
  EXPECT_EQ(mainWindow(&window), 1);
  EXPECT_EQ(window, 0x10020u);
  EXPECT_EQ(mainWindow(nullptr), 0);
  EXPECT_THAT(Violations(), testing::ElementsAre("GetMainHwnd: null window"));
}

struct Lacking {
  const char* library;
  const char* missing;
  const char* present;
};

TEST(LackingLibraries, LackJustTheOneFunction) {
  for (const Lacking& lacking : {
           Lacking{"Strictcad/Lacking/InsertPart.dll", "InsertPart", "RenamePart"},
           Lacking{"Strictcad/Lacking/RenamePart.dll", "RenamePart", "InsertPart"},
           Lacking{"Strictcad/Lacking/Change2dPart.dll", "Change2dPart", "Insert2dPart"},
           Lacking{"Strictcad/Lacking/Com_CopyProtocol/Keelcomm.dll", "Com_CopyProtocol",
                   "Com_OpenProtocol"},
           Lacking{"Strictcad/Lacking/GetCJCallParam/Tessio.dll", "GetCJCallParam",
                   "AddCJCallParam2"},
       }) {
    SCOPED_TRACE(lacking.library);
    void* library = ImageLibrary(lacking.library);
    EXPECT_EQ(FunctionOf(library, lacking.missing), nullptr);
    EXPECT_NE(FunctionOf(library, lacking.present), nullptr);
  }
}

}  // namespace
}  // namespace quillmar::strict
