// Every broken promise is noticed: the call fails and the journal names the promise.
#include <functional>
#include <memory>
#include <thread>

#include "selftest/StrictSet.h"

namespace quillmar::strict {
namespace {

class Violation : public StrictSet {
 protected:
  void ExpectViolation(const std::string& promise, const std::function<int()>& call) {
    SCOPED_TRACE(promise);
    const std::size_t before = Violations().size();
    EXPECT_EQ(call(), 0);
    ASSERT_GT(Violations().size(), before);
    EXPECT_THAT(Violations()[before], testing::HasSubstr(promise));
  }

  std::string id = NewProtocol();
};

TEST_F(Violation, NullArguments) {
  const char* p = id.c_str();
  std::string text = Blanks();
  ExpectViolation("null text", [&] { return com.Com_CloseProtocol(nullptr); });
  ExpectViolation("null text", [&] { return com.Com_OpenProtocol(nullptr); });
  ExpectViolation("null text", [&] { return com.Com_PutKeyWord(p, nullptr, "k", "v"); });
  ExpectViolation("null text", [&] { return com.Com_PutKeyWord(p, "s", nullptr, "v"); });
  ExpectViolation("null text", [&] { return com.Com_PutGlobalData(p, "Unit", nullptr); });
  ExpectViolation("null text", [&] { return com.Com_PutDataParam(p, "d", "1", nullptr); });
  ExpectViolation("null text", [&] { return link.Link_SetLinkTo(p, nullptr, "P"); });
  ExpectViolation("null output", [&] { return com.Com_GetDataCount(p, nullptr); });
  ExpectViolation("null output", [&] { return com.Com_GetBuffer(p, nullptr); });
  ExpectViolation("null list", [&] { return com.Com_PutBuffer(p, nullptr); });
  ExpectViolation("null growing buffer", [&] { return com.Com_GetModelID(p, nullptr); });
  ExpectViolation("null growing buffer",
                  [&] { return com.Com_GetDataParam(p, "d", text.data(), nullptr); });
}

TEST_F(Violation, GrowingBuffers) {
  com.Com_PutGlobalData(id.c_str(), "Unit", "1");
  const std::string mixed = Blanks(1023) + "x";
  for (const std::string& wrong :
       {std::string(), Blanks(1023), Blanks(1025), Blanks(1536), mixed, std::string(1024, '\t')}) {
    std::string buffer = wrong;
    ExpectViolation("multiple of 1024 blanks",
                    [&] { return com.Com_GetGlobalData(id.c_str(), "Unit", buffer.data()); });
    EXPECT_EQ(buffer, wrong);
  }
  com.Com_PutDataParam(id.c_str(), "d", "1", "mm");
  std::string value = Blanks(1024);
  std::string unit = Blanks(2048);
  ExpectViolation("differ in length",
                  [&] { return com.Com_GetDataParam(id.c_str(), "d", value.data(), unit.data()); });
}

TEST_F(Violation, ListsThatAreNotSound) {
  struct Case {
    const char* promise;
    std::function<void(QmStringList&)> spoil;
  };
  const auto header = [](QmStringNode* node) {
    return reinterpret_cast<QmTextHeader*>(node->text - sizeof(QmTextHeader));
  };
  const std::vector<Case> cases = {
      {"virtual table", [](QmStringList& list) { list.virtualTable = nullptr; }},
      {"negative number", [](QmStringList& list) { list.count = -1; }},
      {"block size", [](QmStringList& list) { list.blockSize = 0; }},
      {"lead back", [](QmStringList& list) { list.tail->previous = nullptr; }},
      {"tail", [](QmStringList& list) { list.tail = list.head; }},
      {"more nodes", [](QmStringList& list) { list.count = 1; }},
      {"fewer nodes", [](QmStringList& list) { list.count = 3; }},
      {"without text", [](QmStringList& list) { list.head->text = nullptr; }},
      {"reference count 0", [&](QmStringList& list) { header(list.head)->references = 0; }},
      {"reference count -2", [&](QmStringList& list) { header(list.tail)->references = -2; }},
      {"length", [&](QmStringList& list) { header(list.head)->length = 4; }},
      {"capacity", [&](QmStringList& list) { header(list.head)->capacity = 2; }},
  };
  for (const Case& spoiled : cases) {
    StringList list({"one", "two"});
    spoiled.spoil(*list.Get());
    ExpectViolation(spoiled.promise, [&] { return com.Com_PutBuffer(id.c_str(), list.Get()); });
  }
  StringList sound({"one", "two"});
  EXPECT_NE(com.Com_PutBuffer(id.c_str(), sound.Get()), 0);
}

TEST_F(Violation, QuestionsThatMustNotBeAsked) {
  char notBlank[QM_PROTOCOL_ID_BUFFER] = "Copy";
  QmWindow window = 0;
  char text[4] = "abc";
  ExpectViolation("25 blanks", [&] { return com.Com_CopyProtocol(id.c_str(), notBlank); });
  ExpectViolation("no calculation holds",
                  [&] { return com.Com_GetOwnerHWND(id.c_str(), &window); });
  ExpectViolation("below the text's length", [&] { return link.Link_Translate(text, 2); });
  std::thread([&] { com.Com_IsProtocolExists(id.c_str()); }).join();
  EXPECT_THAT(Violations().back(), testing::HasSubstr("another thread"));
}

using GuardedListDeathTest = Violation;

TEST_F(GuardedListDeathTest, IsNeitherWrittenNorReadBehindItsEndNorReadLate) {
  com.Com_PutGlobalData(id.c_str(), "Unit", "1");
  QmStringList* list = nullptr;
  ASSERT_NE(com.Com_GetBuffer(id.c_str(), &list), 0);
  const std::string item(TextsOf(list).front());
  EXPECT_FALSE(item.empty());
  EXPECT_DEATH(list->head->text[0] = 'x', "");
  EXPECT_DEATH(list->count = 0, "");
  volatile char read = 0;
  // Up to three bytes of padding keep the text's header aligned.
  EXPECT_DEATH(read = list->head->text[item.size() + 1 + 3], "");
  EXPECT_DEATH(read = *static_cast<const char*>(list->virtualTable), "");
  com.Com_IsProtocolExists("Another");
  read = list->head->text[0];
  com.Com_IsProtocolExists(id.c_str());
  EXPECT_DEATH(read = list->head->text[0], "");
  EXPECT_EQ(static_cast<char>(read), item[0]);
}

}  // namespace
}  // namespace quillmar::strict
