// Libraries that keep their contract badly or lack functions.
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "protocol/VXProtocol.h"
#include "support/TestMachine.h"

namespace quillmar {
namespace {

short QM_STDCALL OpenAnything(char*) { return 1; }
short QM_STDCALL LeaveUntouched(const char*, const char*, const char*, char*) { return 1; }
short QM_STDCALL FillToTheBrim(const char*, const char*, const char*, char* value) {
  std::memset(value, 'x', std::strlen(value));
  return 1;
}
short QM_STDCALL ForgetTheEnd(const char*, const char*, const char*, char* value) {
  value[std::strlen(value)] = 'x';
  std::memcpy(value, "text", 5);
  return 1;
}
short QM_STDCALL NoList(const char*, QmStringList** list) {
  *list = nullptr;
  return 1;
}

// Link libraries of the older kind know nothing of a link's two integers.
short QM_STDCALL OlderLinkFrom(const char*, int, char* first, char* second) {
  std::strcpy(first, "a");
  std::strcpy(second, "P2");
  return 1;
}
short QM_STDCALL OlderLinkFrom2(const char*, const char*, char* text) {
  std::strcpy(text, "P3");
  return 1;
}

class UnreliableStorageTest : public ::testing::Test {
 protected:
  UnreliableStorageTest() { storage.Com_OpenProtocol.pointer = &OpenAnything; }

  TestMachine machine;
  ErrorLog errors;
  WindowActivator activator;
  StorageTable storage;
  LinkTable links;
  ProtocolContext context{storage, links, errors, activator};
};

TEST_F(UnreliableStorageTest, ReadsEndWhateverTheLibraryDoesWithTheBuffer) {
  VXProtocol protocol(context, "P1");
  std::string value = "before";
  storage.Com_GetKeyWord.pointer = &LeaveUntouched;
  EXPECT_TRUE(protocol.GetKeyWord("Main", "Word", value));
  EXPECT_EQ(value, "");
  storage.Com_GetKeyWord.pointer = &ForgetTheEnd;
  EXPECT_TRUE(protocol.GetKeyWord("Main", "Word", value));
  EXPECT_EQ(value, "text");
}

TEST_F(UnreliableStorageTest, ALibraryThatAlwaysWantsMoreIsGivenUp) {
  VXProtocol protocol(context, "P1");
  storage.Com_GetKeyWord.pointer = &FillToTheBrim;
  std::string value = "before";
  EXPECT_FALSE(protocol.GetKeyWord("Main", "Word", value));
  EXPECT_EQ(value, "");
}

TEST_F(UnreliableStorageTest, LinksOfAnOlderLibraryHaveNoStateAndNoLevel) {
  VXProtocol protocol(context, "P1");
  const auto older = [](auto& pointer, auto function) {
    pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(
        reinterpret_cast<void*>(function));
  };
  older(links.Link_GetLinkFrom.pointer, &OlderLinkFrom);
  older(links.Link_GetLinkFrom2.pointer, &OlderLinkFrom2);
  std::string first;
  std::string second;
  int enabled = 7;
  int level = 7;
  EXPECT_TRUE(protocol.GetLinkFrom(1, first, second, enabled, level));
  EXPECT_EQ(first + second, "aP2");
  EXPECT_EQ(enabled + level, 0);
  enabled = level = 7;
  EXPECT_TRUE(protocol.GetLinkFrom2("b", second, enabled, level));
  EXPECT_EQ(second, "P3");
  EXPECT_EQ(enabled + level, 0);
}

TEST_F(UnreliableStorageTest, MissingFunctionsFailInOrder) {
  VXProtocol protocol(context, "P1");
  std::string text = "before";
  std::vector<std::string_view> texts;
  int number = 0;
  EXPECT_FALSE(protocol.GetModelID(text));
  EXPECT_FALSE(protocol.PutBuffer({"a"}));
  EXPECT_FALSE(protocol.GetBuffer(texts));
  EXPECT_FALSE(protocol.GetLinkFrom(1, text, text, number, number));
  EXPECT_FALSE(protocol.SetLinkTo("a", "b"));
  EXPECT_FALSE(VXProtocol::CreateUniquePID(context, text));
  EXPECT_EQ(VXProtocol::ProtocolExists(context, "P1"), 0);
  EXPECT_EQ(text, "");
  storage.Com_GetBuffer.pointer = &NoList;
  EXPECT_FALSE(protocol.GetBuffer(texts));
  EXPECT_TRUE(protocol.MakeReference(text, Markers::Standard));
  EXPECT_EQ(text, "P1<@PID>");
  EXPECT_FALSE(protocol.Close());
}

}  // namespace
}  // namespace quillmar
