// Automation objects registered with the native machine.
#include "platform/Automation.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "platform/Registry.h"
#include "platform/native/Machine.h"
#include "support/TestMachine.h"

namespace quillmar::platform {
namespace {

constexpr const char* kClass = "{01234567-89AB-CDEF-0123-456789ABCDEF}";
constexpr int kEcho = 1;
constexpr int kRaise = 2;
constexpr int kThrow = 3;
constexpr int kDie = 4;

class Server : public AutomationServer {
 public:
  AutomationResult Call(int identifier, const AutomationArguments& arguments) override {
    switch (identifier) {
      case kEcho:
        return {AutomationStatus::Done, arguments.empty() ? AutomationValue() : arguments[0], {}};
      case kRaise:
        return {AutomationStatus::Raised, {}, "what went wrong"};
      case kThrow:
        throw std::runtime_error("thrown");
      case kDie:
        Machine::Current().EndServer(kClass);
        return {AutomationStatus::Done, 1, {}};
      default:
        return {AutomationStatus::UnknownMember, {}, {}};
    }
  }
  std::optional<int> FindMember(const std::string& name) override {
    return name == "Echo" ? std::optional(kEcho) : std::nullopt;
  }
};

class Automation : public testing::Test {
 protected:
  static void RegisterClass(const std::string& id) {
    CreateKey(Hive::LocalMachine, "SOFTWARE\\Classes\\Test.Object\\CLSID")
        ->Set("", RegistryType::Text, id);
  }

  TestMachine test;
  Machine& machine = Machine::Current();
};

TEST_F(Automation, FindsClassesInTheRegistry) {
  EXPECT_EQ(FindAutomationClass("Test.Object"), std::nullopt);
  RegisterClass("{01234567-89ab-cdef-0123-456789abcdef}");
  EXPECT_EQ(FindAutomationClass("TEST.object"), kClass);
  EXPECT_EQ(FindAutomationClass("Other.Object"), std::nullopt);
  EXPECT_EQ(FindAutomationClass(""), std::nullopt);
  for (const char* bad : {"", "{}", "01234567-89AB-CDEF-0123-456789ABCDEF",
                          "{0123456x-89AB-CDEF-0123-456789ABCDEF}"}) {
    RegisterClass(bad);
    EXPECT_EQ(FindAutomationClass("Test.Object"), std::nullopt) << bad;
  }
}

struct ConversionCase {
  AutomationValue value;
  AutomationType type;
  std::optional<AutomationValue> result;  // nothing: no such value of that type
};

TEST_F(Automation, ConvertsResults) {
  const ConversionCase cases[] = {
      {7, AutomationType::Int, 7},
      {7, AutomationType::None, AutomationValue()},
      {std::int16_t{-7}, AutomationType::Int, -7},
      {70000, AutomationType::Short, std::nullopt},
      {-7, AutomationType::Short, std::int16_t{-7}},
      {2, AutomationType::Bool, true},
      {true, AutomationType::Int, -1},
      {std::string("12"), AutomationType::Int, 12},
      {std::string("x"), AutomationType::Int, std::nullopt},
      {12, AutomationType::Text, std::string("12")},
      {std::string("\xB3"), AutomationType::Text, std::string("\xB3")},
      {AutomationValue(), AutomationType::Text, std::string()},
      {AutomationValue(), AutomationType::Int, 0},
  };
  machine.RegisterActiveObject(kClass, std::make_shared<Server>());
  std::unique_ptr<AutomationObject> object = FindActiveObject(kClass);
  ASSERT_NE(object, nullptr);
  for (const ConversionCase& row : cases) {
    AutomationResult result = object->Call(kEcho, {row.value}, row.type);
    EXPECT_EQ(result.status, row.result ? AutomationStatus::Done : AutomationStatus::Failed);
    EXPECT_TRUE(!row.result || result.value == *row.result);
  }
  EXPECT_EQ(object->FindMember("Echo"), kEcho);
  EXPECT_EQ(object->FindMember("Other"), std::nullopt);
  EXPECT_EQ(object->Call(99, {}, AutomationType::None).status, AutomationStatus::UnknownMember);
  EXPECT_EQ(object->Call(kThrow, {}, AutomationType::None).status, AutomationStatus::Failed);
  AutomationResult raised = object->Call(kRaise, {}, AutomationType::Int);
  EXPECT_EQ(raised.status, AutomationStatus::Raised);
  EXPECT_EQ(raised.description, "what went wrong");
}

TEST_F(Automation, AttachesBeforeItCreates) {
  EXPECT_EQ(FindActiveObject(kClass), nullptr);
  EXPECT_EQ(CreateAutomationObject(kClass), nullptr);
  int made = 0;
  machine.SetClassFactory(kClass, [&] {
    ++made;
    return made == 1 ? nullptr : std::make_shared<Server>();
  });
  EXPECT_EQ(CreateAutomationObject(kClass), nullptr);
  std::unique_ptr<AutomationObject> created = CreateAutomationObject(kClass);
  ASSERT_NE(created, nullptr);
  EXPECT_EQ(FindActiveObject(kClass), nullptr);
  machine.RegisterActiveObject("{01234567-89ab-cdef-0123-456789abcdef}",
                               std::make_shared<Server>());
  EXPECT_NE(CreateAutomationObject(kClass), nullptr);
  EXPECT_EQ(made, 2);
}

TEST_F(Automation, AnswersServerGoneOnceTheProgramHasEnded) {
  machine.SetClassFactory(kClass, [] { return std::make_shared<Server>(); });
  std::unique_ptr<AutomationObject> created = CreateAutomationObject(kClass);
  machine.RegisterActiveObject(kClass, std::make_shared<Server>());
  std::unique_ptr<AutomationObject> active = FindActiveObject(kClass);
  machine.RevokeActiveObject(kClass);
  EXPECT_EQ(FindActiveObject(kClass), nullptr);
  EXPECT_EQ(active->Call(kEcho, {1}, AutomationType::Int).status, AutomationStatus::Done);
  EXPECT_EQ(active->Call(kDie, {}, AutomationType::Int).status, AutomationStatus::ServerGone);
  EXPECT_EQ(active->Call(kEcho, {1}, AutomationType::Int).status, AutomationStatus::ServerGone);
  EXPECT_EQ(active->FindMember("Echo"), std::nullopt);
  EXPECT_EQ(created->Call(kEcho, {1}, AutomationType::Int).status, AutomationStatus::ServerGone);
  machine.RegisterActiveObject(kClass, std::make_shared<Server>());
  EXPECT_NE(FindActiveObject(kClass), nullptr);
}

TEST_F(Automation, LetsGoOfAnAbandonedObject) {
  auto server = std::make_shared<Server>();
  machine.RegisterActiveObject(kClass, server);
  std::unique_ptr<AutomationObject> object = FindActiveObject(kClass);
  object->Abandon();
  EXPECT_EQ(object->Call(kEcho, {1}, AutomationType::Int).status, AutomationStatus::ServerGone);
  object.reset();
  machine.RevokeActiveObject(kClass);
  EXPECT_EQ(server.use_count(), 1);
}

// A class without a factory is started by the program that the registry names.
TEST_F(Automation, StartsTheLocalServer) {
  std::string program = test.Install(QM_TEST_IN_PROCESS, test.Folder());
  CreateKey(Hive::LocalMachine,
            std::string("Software\\Classes\\CLSID\\") + kClass + "\\LocalServer32")
      ->Set("", RegistryType::Text, '"' + program + '"');
  EXPECT_EQ(CreateAutomationObject(kClass), nullptr);  // it registers nothing
  EXPECT_THAT(machine.DebugLines(), testing::ElementsAre('"' + program + "\" -Embedding"));
}

}  // namespace
}  // namespace quillmar::platform
