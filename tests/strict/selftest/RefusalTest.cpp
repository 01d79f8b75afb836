// What the set refuses although the call itself keeps to the contract.
#include <functional>

#include "selftest/StrictSet.h"

namespace quillmar::strict {
namespace {

class Refusal : public StrictSet {};

TEST_F(Refusal, ClosedAndUnknownProtocols) {
  const std::string closed = NewProtocol();
  ASSERT_NE(com.Com_CloseProtocol(closed.c_str()), 0);
  for (const std::string& id : {closed, std::string("Unknown")}) {
    SCOPED_TRACE(id);
    QmStringList* list = nullptr;
    std::string text = Blanks();
    StringList empty({});
    EXPECT_EQ(com.Com_CloseProtocol(id.c_str()), 0);
    EXPECT_EQ(com.Com_PutKeyWord(id.c_str(), "Cadx", "Drawn", "1"), 0);
    EXPECT_EQ(com.Com_PutGlobalData(id.c_str(), "Unit", "1"), 0);
    EXPECT_EQ(com.Com_PutModelID(id.c_str(), "M"), 0);
    EXPECT_EQ(com.Com_PutDataParam(id.c_str(), "d", "1", "mm"), 0);
    EXPECT_EQ(com.Com_SetVersion(id.c_str(), 1, 0), 0);
    EXPECT_EQ(com.Com_PutBuffer(id.c_str(), empty.Get()), 0);
    EXPECT_EQ(com.Com_GetBuffer(id.c_str(), &list), 0);
    EXPECT_EQ(link.Link_SetLinkFrom(id.c_str(), "d", "#1"), 0);
    EXPECT_EQ(link.Link_SetLinkTo(id.c_str(), "NewView", "P"), 0);
    EXPECT_EQ(com.Com_GetGlobalData(id.c_str(), "Unit", text.data()), 0);
  }
  EXPECT_EQ(com.Com_IsProtocolExists(closed.c_str()), QM_PROTOCOL_CLOSED);
  EXPECT_EQ(com.Com_EraseProtocol("Unknown"), 0);
  EXPECT_NE(com.Com_EraseProtocol(closed.c_str()), 0);
  EXPECT_EQ(com.Com_IsProtocolExists(closed.c_str()), QM_PROTOCOL_MISSING);
}

TEST_F(Refusal, ASecondOpenDoesNotNest) {
  const std::string id = NewProtocol();
  EXPECT_EQ(Open(id), 1);
  EXPECT_EQ(Core().Strict_OpenProtocols(), 1);
  EXPECT_NE(com.Com_CloseProtocol(id.c_str()), 0);
  EXPECT_EQ(com.Com_CloseProtocol(id.c_str()), 0);
  EXPECT_EQ(Core().Strict_OpenProtocols(), 0);
}

TEST_F(Refusal, WhatACalculationHoldsIsNeitherOpenedNorErased) {
  Core().Strict_HoldByCalculation("Held", 4711);
  EXPECT_EQ(com.Com_IsProtocolExists("Held"), QM_PROTOCOL_HELD_BY_CALCULATION);
  const short opened = Open("Held");
  EXPECT_NE(opened, 1);
  EXPECT_NE(opened, 0) << "a caller must ask for 1";
  EXPECT_EQ(com.Com_EraseProtocol("Held"), 0);
  QmWindow window = 0;
  EXPECT_NE(com.Com_GetOwnerHWND("Held", &window), 0);
  EXPECT_EQ(window, 4711u);
}

TEST_F(Refusal, IdentifiersThatAreNone) {
  EXPECT_EQ(Open(""), 0);
  EXPECT_EQ(Open(std::string(26, 'x')), 0);
  EXPECT_EQ(Open(std::string(25, 'x')), 1);
}

TEST_F(Refusal, AnswerOfZeroFailsACallWithoutAnEffect) {
  const std::string id = NewProtocol();
  Core().Strict_SetAnswer("Com_PutGlobalData", "0");
  EXPECT_EQ(com.Com_PutGlobalData(id.c_str(), "Unit", "1"), 0);
  Core().Strict_SetAnswer("Com_PutGlobalData", nullptr);
  std::string value = Blanks();
  EXPECT_EQ(com.Com_GetGlobalData(id.c_str(), "Unit", value.data()), 0);
  EXPECT_THAT(Violations(), testing::IsEmpty());
}

}  // namespace
}  // namespace quillmar::strict
