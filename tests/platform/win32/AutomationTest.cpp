// The client of automation objects against an object of this process.
#include "platform/Automation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "platform/win32/AutomationValues.h"

namespace quillmar::platform {
namespace {

using win32::Narrow;

constexpr CLSID kTestClass = {
    0x6d0c1b1e, 0x52a4, 0x4c0e, {0x9f, 0x31, 0x2b, 0x77, 0x15, 0x08, 0xaa, 0x01}};
constexpr char kTestClassId[] = "{6D0C1B1E-52A4-4C0E-9F31-2B771508AA01}";

using Answer = std::function<HRESULT(DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO&)>;

// An automation object that is active as long as it lives.
class TestObject final : public IDispatch {
 public:
  explicit TestObject(Answer answer) : answer(std::move(answer)) {
    InitializeAutomation();
    RegisterActiveObject(this, kTestClass, ACTIVEOBJECT_STRONG, &registration);
  }
  ~TestObject() { RevokeActiveObject(registration, nullptr); }

  ULONG References() const { return references; }

  HRESULT WINAPI QueryInterface(REFIID interfaceId, void** object) override {
    const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IDispatch;
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() override { return ++references; }
  ULONG WINAPI Release() override { return --references; }
  HRESULT WINAPI GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT WINAPI GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* identifier) override {
    if (std::wstring(names[0]) != L"SetSmartMode") return DISP_E_UNKNOWNNAME;
    *identifier = 0x31;
    return S_OK;
  }
  HRESULT WINAPI Invoke(DISPID identifier, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* error, UINT*) override {
    EXPECT_EQ(flags, DISPATCH_METHOD);
    return answer(identifier, *parameters, result, *error);
  }

 private:
  Answer answer;
  DWORD registration = 0;
  ULONG references = 1;
};

Answer Fail(HRESULT status) {
  return [=](DISPID, DISPPARAMS&, VARIANT*, EXCEPINFO&) { return status; };
}

TEST(Automation, PassesArgumentsInOrderAndUnchanged) {
  const std::string text("za\xbf\xf3\xb3\xe6\0\x80\n", 9);  // in code page 1250
  std::vector<VARIANT> seen;
  std::string seenText;
  TestObject object([&](DISPID identifier, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO&) {
    EXPECT_EQ(identifier, 0x1D);
    EXPECT_EQ(result, nullptr);
    seen.assign(parameters.rgvarg, parameters.rgvarg + parameters.cArgs);
    seenText = Narrow(seen[3].bstrVal);
    return S_OK;
  });
  const auto client = FindActiveObject(kTestClassId);
  ASSERT_NE(client, nullptr);
  const auto result = client->Call(0x1D, {-7, text, std::int16_t{12}, true, platform::NoValue{}},
                                   AutomationType::None);
  EXPECT_EQ(result.status, AutomationStatus::Done);
  ASSERT_EQ(seen.size(), 5U);  // the last one first
  EXPECT_EQ(seen[4].vt, VT_I4);
  EXPECT_EQ(seen[4].lVal, -7);
  EXPECT_EQ(seen[3].vt, VT_BSTR);
  EXPECT_EQ(seenText, text);
  EXPECT_EQ(seen[2].vt, VT_I2);
  EXPECT_EQ(seen[2].iVal, 12);
  EXPECT_EQ(seen[1].vt, VT_BOOL);
  EXPECT_EQ(seen[1].boolVal, VARIANT_TRUE);
  EXPECT_EQ(seen[0].vt, VT_ERROR);
  EXPECT_EQ(seen[0].scode, DISP_E_PARAMNOTFOUND);
}

struct ResultCase {
  const char* name;
  AutomationValue answered;
  AutomationType type;
  std::optional<AutomationValue> value;  // nothing: the call fails
};

const ResultCase kResults[] = {
    {"integer", 70000, AutomationType::Int, 70000},
    {"16-bit as integer", std::int16_t{-3}, AutomationType::Int, -3},
    {"integer as 16-bit", -3, AutomationType::Short, std::int16_t{-3}},
    {"integer beyond 16 bits", 70000, AutomationType::Short, std::nullopt},
    {"true as integer", true, AutomationType::Int, -1},
    {"integer as truth", 5, AutomationType::Bool, true},
    {"zero as truth", 0, AutomationType::Bool, false},
    {"text", std::string("a\0b\xb3", 4), AutomationType::Text, std::string("a\0b\xb3", 4)},
    {"integer as text", -12, AutomationType::Text, std::string("-12")},
    {"number text as integer", std::string("41"), AutomationType::Int, 41},
    {"word as integer", std::string("word"), AutomationType::Int, std::nullopt},
};

TEST(Automation, ConvertsResultsToTheTypeAskedFor) {
  for (const ResultCase& row : kResults) {
    TestObject object([&](DISPID, DISPPARAMS&, VARIANT* result, EXCEPINFO&) {
      return VariantCopy(result, win32::ToVariant(row.answered).Get());
    });
    const auto result = FindActiveObject(kTestClassId)->Call(3, {}, row.type);
    const bool done = result.status == AutomationStatus::Done;
    EXPECT_EQ(done, row.value.has_value()) << row.name;
    EXPECT_TRUE(result.value == row.value.value_or(AutomationValue())) << row.name;
  }
}

// A method without a result answers an empty variant to who asks for one.
TEST(Automation, TakesAnEmptyResultForZero) {
  TestObject object(Fail(S_OK));
  const auto client = FindActiveObject(kTestClassId);
  EXPECT_TRUE(client->Call(3, {}, AutomationType::Int).value == AutomationValue(0));
  EXPECT_TRUE(client->Call(7, {}, AutomationType::Text).value == AutomationValue(std::string()));
}

HRESULT WINAPI FillInLater(EXCEPINFO* error) {
  error->bstrDescription = SysAllocString(L"later");
  return S_OK;
}

TEST(Automation, BringsTheDescriptionOfARaisedError) {
  TestObject object([](DISPID identifier, DISPPARAMS&, VARIANT*, EXCEPINFO& error) {
    if (identifier == 1) error.bstrDescription = SysAllocString(L"b\u0142\u0105d");
    if (identifier == 2) error.pfnDeferredFillIn = FillInLater;
    return DISP_E_EXCEPTION;
  });
  const auto client = FindActiveObject(kTestClassId);
  const char* descriptions[] = {"", "b\xb3\xb9\x64", "later"};
  for (int identifier = 0; identifier < 3; ++identifier) {
    const auto result = client->Call(identifier, {}, AutomationType::Int);
    EXPECT_EQ(result.status, AutomationStatus::Raised);
    EXPECT_EQ(result.description, descriptions[identifier]);
  }
}

TEST(Automation, TellsFailuresApart) {
  const std::pair<HRESULT, AutomationStatus> failures[] = {
      {DISP_E_MEMBERNOTFOUND, AutomationStatus::UnknownMember},
      {DISP_E_UNKNOWNNAME, AutomationStatus::UnknownMember},
      {static_cast<HRESULT>(0x800706ba), AutomationStatus::ServerGone},
      {static_cast<HRESULT>(0x800706be), AutomationStatus::ServerGone},
      {static_cast<HRESULT>(0x800706b5), AutomationStatus::ServerGone},
      {static_cast<HRESULT>(0x80010108), AutomationStatus::ServerGone},
      {static_cast<HRESULT>(0x800401fd), AutomationStatus::ServerGone},
      {DISP_E_TYPEMISMATCH, AutomationStatus::Failed},
      {DISP_E_BADPARAMCOUNT, AutomationStatus::Failed},
      {E_OUTOFMEMORY, AutomationStatus::Failed},
  };
  for (const auto& [failure, status] : failures) {
    TestObject object(Fail(failure));
    const auto result = FindActiveObject(kTestClassId)->Call(1, {}, AutomationType::Int);
    EXPECT_EQ(result.status, status) << std::hex << failure;
  }
}

TEST(Automation, FindsMembersByName) {
  TestObject object(Fail(S_OK));
  const auto client = FindActiveObject(kTestClassId);
  EXPECT_EQ(client->FindMember("SetSmartMode"), 0x31);
  EXPECT_EQ(client->FindMember("Unknown"), std::nullopt);
  EXPECT_EQ(client->FindMember(""), std::nullopt);
}

TEST(Automation, ReleasesWhatItHoldsUnlessItWasAbandoned) {
  TestObject object(Fail(S_OK));
  const ULONG before = object.References();
  FindActiveObject(kTestClassId)->Call(1, {"text"}, AutomationType::Text);
  EXPECT_EQ(object.References(), before);
  auto client = FindActiveObject(kTestClassId);
  client->Abandon();
  EXPECT_EQ(client->Call(1, {}, AutomationType::Int).status, AutomationStatus::ServerGone);
  EXPECT_EQ(client->FindMember("SetSmartMode"), std::nullopt);
  client.reset();
  EXPECT_EQ(object.References(), before + 1);
}

// Messages that arrive while a call is out may end the client; the object must outlive its call.
TEST(Automation, SurvivesItsEndDuringACall) {
  std::unique_ptr<AutomationObject> client;
  TestObject* called = nullptr;
  ULONG during = 0;
  TestObject object([&](DISPID, DISPPARAMS&, VARIANT* result, EXCEPINFO&) {
    client.reset();
    during = called->References();
    return VariantCopy(result, win32::ToVariant(5).Get());
  });
  called = &object;
  const ULONG before = object.References();
  client = FindActiveObject(kTestClassId);
  EXPECT_TRUE(client->Call(1, {}, AutomationType::Int).value == AutomationValue(5));
  EXPECT_EQ(during, before + 1);
  EXPECT_EQ(object.References(), before);
}

TEST(Automation, FindsNothingWhereThereIsNothing) {
  InitializeAutomation();
  EXPECT_EQ(FindAutomationClass("No.Such.Class"), std::nullopt);
  for (const char* classId : {kTestClassId, "", "{}", "no class"}) {
    EXPECT_EQ(FindActiveObject(classId), nullptr) << classId;
    EXPECT_EQ(CreateAutomationObject(classId), nullptr) << classId;
  }
}

// The system's own class of file-system objects is there on every machine.
TEST(Automation, FindsAClassByItsName) {
  EXPECT_EQ(FindAutomationClass("Scripting.FileSystemObject"),
            "{0D43FE01-F093-11CF-8940-00A0C9054228}");
}

}  // namespace
}  // namespace quillmar::platform
