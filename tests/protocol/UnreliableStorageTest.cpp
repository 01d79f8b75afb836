// Libraries that keep their contract badly or lack functions.
#include <gtest/gtest.h>

#include <cstring>

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
