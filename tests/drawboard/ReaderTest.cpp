// What the module reads back: buffer rule, selection, bad arguments.
#include <vector>

#include "CadAddin.h"
#include "drawboard/DriveFiles.h"
#include "platform/Messages.h"

namespace {

struct NamedReader {
  const char* name;
  ListReader read;
  std::string expected;
};

// The caller's two steps: a buffer that is one character short, then one that just fits.
void CheckTwoSteps(const NamedReader& reader) {
  SCOPED_TRACE(reader.name);
  const int needed = static_cast<int>(reader.expected.size());
  ASSERT_GT(needed, 0);
  std::vector<char> buffer(reader.expected.size() + 3, '#');
  int size = needed - 1;
  EXPECT_EQ(reader.read(buffer.data(), &size), 0);
  EXPECT_EQ(size, needed);
  size = needed;
  EXPECT_EQ(reader.read(buffer.data(), &size), 1);
  EXPECT_EQ(size, needed);
  EXPECT_EQ(std::string(buffer.data()), reader.expected);
  EXPECT_EQ(buffer[reader.expected.size() + 1], '#');
}

}  // namespace

TEST_F(CadAddin, EveryListReaderFollowsTheTwoStepRule) {
  ASSERT_EQ(cad.InsertShaft("P1", "", "*view*,M,D_1,30,L_1,40,Note,a<VXCOMMA>b",
                            Reference("P1").c_str(), "<ASM>\\Shaft.dbp", "", nullptr, 0),
            1);
  ASSERT_EQ(InsertWheel("P2", "<ASM>\\Wheel.dbp"), 1);
  ASSERT_EQ(cad.SetFeaturesState("P1", "Chamfer,1,Groove,0"), 1);
  ASSERT_EQ(cad.SetPartsVisibility("P1", "Wheel,0"), 1);
  ASSERT_EQ(cad.InsertAssembly("A1", "", Reference("A1").c_str()), 1);
  ASSERT_EQ(cad.Drawboard_Select("Wheel"), 1);
  char name[1024], identifier[260], data[10000];
  const NamedReader readers[] = {
      {"GetPart", [&](char* t, int* s) { return cad.GetPart(name, t, s); }, Reference("P2")},
      {"GetProtocol", [&](char* t, int* s) { return cad.GetProtocol("shaft", t, s); },
       Reference("P1")},
      {"GetAllParts", cad.GetAllParts,
       Reference("P1") + "<@NEXT_PROT>" + Reference("P2") + "<@NEXT_PROT>" + Reference("A1")},
      {"GetParameterList", [&](char* t, int* s) { return cad.GetParameterList("P1", t, s); },
       "D_1,30,L_1,40,Note,a<VXCOMMA>b"},
      {"GetParameterListEx",
       [&](char* t, int* s) { return cad.GetParameterListEx("P2", t, s, 0, 0); }, "d,100,b,20"},
      {"GetShaftParameterList",
       [&](char* t, int* s) { return cad.GetShaftParameterList("P1", t, s); },
       "D_1,30,L_1,40,Note,a<VXCOMMA>b"},
      {"GetFeaturesState", [&](char* t, int* s) { return cad.GetFeaturesState("P1", t, s); },
       "Chamfer,1,Groove,0"},
      {"GetReferenceDims", [&](char* t, int* s) { return cad.GetReferenceDims("P1", t, s); },
       "Length,40,Height,30"},
      {"GetPartsVisibility", [&](char* t, int* s) { return cad.GetPartsVisibility("A1", t, s); },
       "Shaft,1,Wheel,0"},
      {"GetAssembly", [&](char* t, int* s) { return cad.GetAssembly(name, identifier, t, s); },
       Reference("A1")},
      {"GetDataWD", [&](char* t, int* s) { return cad.GetDataWD(t, s, data); }, "d,100,b,20"},
  };
  for (const NamedReader& reader : readers) CheckTwoSteps(reader);
  EXPECT_EQ(Read([&](char* t, int* s) { return cad.GetPartsVisibility("P1", t, s); }), "")
      << "a part has no parts of its own";
  EXPECT_STREQ(identifier, "A1");
  EXPECT_STREQ(data, "Wheel");
}

TEST_F(CadAddin, AnUnknownKeyIsPlainFailureOfEveryReader) {
  ASSERT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
  using Reader = int(QM_CDECL*)(const char*, char*, int*);
  for (const Reader reader : {cad.GetProtocol, cad.GetParameterList, cad.GetShaftParameterList,
                              cad.GetPhysicalPropertiesEx, cad.GetFeaturesState,
                              cad.GetReferenceDims, cad.GetPartsVisibility}) {
    char text[64];
    int size = sizeof text - 1;
    EXPECT_EQ(reader("nobody", text, &size), 0);
    EXPECT_EQ(size, 0);
  }
  char name[1024], text[64];
  int size = sizeof text - 1;
  EXPECT_EQ(cad.GetPart(name, text, &size), 0);
  EXPECT_EQ(size, 0);
  size = sizeof text - 1;
  EXPECT_EQ(cad.GetShaftParameterList("P1", text, &size), 0) << "a wheel is no shaft";
}

TEST_F(CadAddin, NullAndZeroArgumentsDoNoHarm) {
  const auto call = []<typename... Parameter>(int(QM_CDECL * function)(Parameter...)) {
    function(Parameter{}...);
  };
#define CALL(need, name, result, parameters, arguments) call(cad.name);
  QM_CAD_FUNCTIONS(CALL)
  QM_CAD_2D_FUNCTIONS(CALL)
#undef CALL
#define CALL(name, result, parameters, arguments) call(cad.name);
  DRAWBOARD_FUNCTIONS(CALL)
#undef CALL
  EXPECT_EQ(InsertWheel("P1", "<ASM>\\Wheel.dbp"), 1);
}

TEST_F(CadAddin, QuestionsAreAnsweredOnceAndElseCancelled) {
  char path[8] = "";
  EXPECT_EQ(cad.ShowFileDialog(0, "a.dbp", 0, "", "", path, sizeof path), 0);
  cad.Drawboard_AnswerFile("C:\\a.d");
  EXPECT_EQ(cad.ShowFileDialog(0, "a.dbp", 0, "", "", path, sizeof path), 1);
  EXPECT_STREQ(path, "C:\\a.d");
  EXPECT_EQ(cad.ShowFileDialog(0, "a.dbp", 0, "", "", path, sizeof path), 0);
  cad.Drawboard_AnswerFile("C:\\longer.dbp");
  EXPECT_EQ(cad.ShowFileDialog(0, "a.dbp", 0, "", "", path, sizeof path), 0);

  double x = 0, y = 0;
  int third = 0;
  EXPECT_EQ(cad.GetPoint(&x, &y, &third), 0);
  cad.Drawboard_AnswerPoint(1.5, -2, 3);
  EXPECT_EQ(cad.GetPoint(&x, &y, &third), 1);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, -2);
  EXPECT_EQ(third, 3);
}

TEST_F(CadAddin, TheMainWindowIsARealOneThatEndsWithTheAddin) {
  QmWindow window = 0, activated = 0;
  ASSERT_EQ(cad.GetMainHwnd(&window), 1) << Messages();
  EXPECT_EQ(cad.GetMainHwndForActivation(&activated), 1);
  EXPECT_EQ(window, activated);
  EXPECT_TRUE(quillmar::platform::IsLiveWindow(window));
  CadAddin::TearDown();
  EXPECT_FALSE(quillmar::platform::IsLiveWindow(window));
}
