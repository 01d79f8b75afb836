// LoginCad: its results and what it leaves in the registry.
#include <array>

#include "Contract.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "quillmar/CadDriver.h"

namespace quillmar::contract {
namespace {

const std::string kSession = kModuleKey + "\\Quillmar";
const std::string kFileNames = kModuleKey + "\\Strict\\OptGeneral2";
const std::string kLegacy = kModuleKey + "\\Strict\\OptGeneral";

class LoginCad : public Contract {
 protected:
  LoginCad() {
    SetItems("57", "121");
    EXPECT_TRUE(LoadModule());
  }

  static void SetItems(const char* localItems, const char* sharedItems) {
    const std::array<std::pair<const char*, const char*>, 4> values{
        {{"LocalPartsItems", localItems},
         {"SharedPartsItems", sharedItems},
         {"LocalFileNameDefault", "L %BOM2%"},
         {"SharedFileNameDefault", "S %BOM2%"}}};
    for (const auto& [name, value] : values) {
      ASSERT_TRUE(platform::WriteProfileText(kSuiteFolder + "\\Hexaplan.ini", "Quillmar-General",
                                             name, value));
    }
  }
};

void ExpectSessionValues(std::uint32_t showFlag, const char* modelExt, const char* featureExt,
                         const char* dirName) {
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kSession, "LastLoggedShowFlag"), showFlag);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kSession, "LastLoggedModelExt"), modelExt);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kSession, "LastLoggedFeatureExtension"), featureExt);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kSession, "LastLoggedModelDirName"), dirName);
}

TEST_F(LoginCad, BindsTheAddInAndRemembersTheSession) {
  const QmModule cad = LoadCad();
  EXPECT_EQ(Login(), 1);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(module.GetCadHinstance(), cad);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), "Strictcad");
  ExpectSessionValues(0x11, "prt", "fea", "models");
  EXPECT_FALSE(HostSide::Runs()) << "a login does not start the host";
}

TEST_F(LoginCad, FindsTheAddInWithoutRegardToCase) {
  const QmModule cad = LoadCad();
  LoginArguments arguments;
  arguments.cadModuleName = "STRICTCAD.dll";
  EXPECT_EQ(Login(arguments), 1);
  EXPECT_EQ(module.GetCadHinstance(), cad);
}

TEST_F(LoginCad, AnAddInThatIsNotLoadedFailsAfterTheSessionValues) {
  EXPECT_EQ(Login(), 0);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(module.GetCadHinstance(), nullptr);
  ExpectSessionValues(0x11, "prt", "fea", "models");
}

TEST_F(LoginCad, EachRequiredFunctionMustBeThere) {
#define CONTRACT_REQUIRED(name) #name,
#define CONTRACT_OPTIONAL(name)
#define REQUIRED CONTRACT_REQUIRED
#define OPTIONAL CONTRACT_OPTIONAL
#define CONTRACT_NAME(need, name, result, parameters, arguments) need(name)
  const std::vector<std::string> required = {QM_CAD_FUNCTIONS(CONTRACT_NAME)};
#undef CONTRACT_NAME
#undef OPTIONAL
#undef REQUIRED
#undef CONTRACT_OPTIONAL
#undef CONTRACT_REQUIRED
  ASSERT_THAT(required, SizeIs(19));
  for (const std::string& function : required) {
    SCOPED_TRACE(function);
    const std::string file = function + ".dll";
    LoadCad("Lacking\\" + file);
    LoginArguments arguments;
    arguments.cadModuleName = file.c_str();
    EXPECT_EQ(Login(arguments), 0);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(module.GetCadHinstance(), nullptr);
    EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), "Lacking");
  }
  EXPECT_THAT(CalledFunctions(), IsEmpty());

  const QmModule whole = LoadCad();
  EXPECT_EQ(Login(), 1);
  EXPECT_EQ(module.GetCadHinstance(), whole);
}

TEST_F(LoginCad, ASecondLoginRenewsTheTextsAlone) {
  host = HostSide::Start();
  const QmModule cad = LoadCad();
  ASSERT_EQ(Login(), 1);
  LoadCad("Lacking\\RenamePart.dll");
  host.Forget();
  ForgetCalls();

  LoginArguments other;
  other.cadModuleName = "RenamePart.dll";
  other.showFlag = 0x40;
  other.modelExt = "mod";
  other.featureExt = "";
  other.modelDirName = "lib";
  EXPECT_EQ(Login(other), 1) << "the functions are not looked up again";
  EXPECT_EQ(status, -1);
  EXPECT_EQ(module.GetCadHinstance(), cad);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kModuleKey, "LastLoggedApp"), "Lacking");
  ExpectSessionValues(0x40, "mod", "", "lib");
  EXPECT_THAT(host.Calls(), IsEmpty());
  EXPECT_THAT(CalledFunctions(), IsEmpty());
}

TEST_F(LoginCad, MakesTheFileNameSettings) {
  LoadCad();
  ASSERT_EQ(Login(), 1);
  const std::string documents = platform::DocumentsFolder() + "\\";
  for (const auto& [name, text] :
       std::vector<std::pair<const char*, std::string>>{{"LocalFileName", "L %BOM2%"},
                                                        {"LocalFolder", documents},
                                                        {"SharedFileName", "S %BOM2%"},
                                                        {"SharedFolder", documents}}) {
    EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, name), text) << name;
  }
  for (const auto& [name, number] :
       std::vector<std::pair<const char*, std::uint32_t>>{{"LocalFolderType", 1},
                                                          {"LocalStructure", 0},
                                                          {"SharedFolderType", 32},
                                                          {"SharedStructure", 0},
                                                          {"ReplaceSpaces", 0}}) {
    EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, name), number) << name;
  }
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "TitleExt1"), "L %BOM2%");
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "SmartDir"), documents);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kLegacy, "SmartDirType"), 0u);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "TitleExt2"), "S %BOM2%");
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "StandardDir"), documents);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kLegacy, "StandardDirType"), 0u);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kLegacy, "ReplaceSpaces"), 0u);
}

TEST_F(LoginCad, FileNameSettingsComeFromOlderOnesAndFromWhatIsOffered) {
  SetItems("2", "128");
  SetText(Hive::CurrentUser, kFileNames, "LocalFileName", "Mine");
  SetText(Hive::CurrentUser, kLegacy, "TitleExt2", "Old");
  SetText(Hive::CurrentUser, kLegacy, "StandardDir", "D:\\Parts");
  SetNumber(Hive::CurrentUser, kLegacy, "StandardDirType", 1);
  SetNumber(Hive::CurrentUser, kLegacy, "ReplaceSpaces", 2);
  LoadCad();
  ASSERT_EQ(Login(), 1);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, "LocalFileName"), "Mine");
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "LocalFolderType"), 2u);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, "SharedFileName"), "Old");
  EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, "SharedFolder"), "D:\\Parts");
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "SharedFolderType"), 128u);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "SharedStructure"), 1u);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "ReplaceSpaces"), 2u);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "TitleExt1"), "Mine");
}

// They are somebody's all the same: nothing is written over them, nothing is made of them.
TEST_F(LoginCad, FileNameSettingsOfTheWrongTypeStayAsTheyAre) {
  SetNumber(Hive::CurrentUser, kFileNames, "LocalFileName", 7);
  SetText(Hive::CurrentUser, kFileNames, "LocalFolderType", "32");
  SetNumber(Hive::CurrentUser, kLegacy, "TitleExt2", 7);
  SetText(Hive::CurrentUser, kLegacy, "ReplaceSpaces", "2");
  LoadCad();
  ASSERT_EQ(Login(), 1);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "LocalFileName"), 7u);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, "LocalFolderType"), "32");
  EXPECT_EQ(TextValue(Hive::CurrentUser, kFileNames, "SharedFileName"), "S %BOM2%");
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kFileNames, "ReplaceSpaces"), 0u);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kLegacy, "TitleExt1"), std::nullopt);
  EXPECT_EQ(NumberValue(Hive::CurrentUser, kLegacy, "SmartDirType"), std::nullopt);
}

TEST_F(LoginCad, NullTextsAreEmptyAndNullOutputsAreSkipped) {
  EXPECT_EQ(module.LoginCad(nullptr, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  LoadCad();
  EXPECT_EQ(module.LoginCad("Strictcad.dll", 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr), 1);
  ExpectSessionValues(0, "", "", "");
}

TEST_F(LoginCad, OverlongTextsDoNoHarm) {
  const std::string text(100'000, 'x');
  LoginArguments arguments;
  arguments.cadModuleName = text.c_str();
  arguments.modelDirName = text.c_str();
  arguments.modelExt = text.c_str();
  arguments.featureExt = text.c_str();
  arguments.settingsName = text.c_str();
  EXPECT_EQ(Login(arguments), 0);
  LoadCad();
  arguments.cadModuleName = "Strictcad.dll";
  EXPECT_EQ(Login(arguments), 1);
  EXPECT_EQ(TextValue(Hive::CurrentUser, kSession, "LastLoggedModelExt"), text);
}

}  // namespace
}  // namespace quillmar::contract
