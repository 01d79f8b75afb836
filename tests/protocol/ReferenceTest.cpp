// Reference texts: protocols that travel as one text, and what opening one does to the store.
#include "ProtocolFixture.h"

#include "platform/Messages.h"

namespace quillmar {
namespace {

class ReferenceTest : public ProtocolFixture {
 protected:
  // A protocol with one keyword, as a reference text.
  std::string Reference(std::string& id, Markers markers = Markers::Standard) {
    VXProtocol protocol(context, Stored());
    protocol.PutKeyWord("Main", "Word", "a<@EL>;\r\nb<@PID>");
    id = protocol.GetProtocolID();
    std::string text;
    EXPECT_TRUE(protocol.MakeReference(text, markers));
    return text;
  }

  std::string WordOf(const std::string& id) {
    VXProtocol protocol(context, id);
    std::string word;
    protocol.GetKeyWord("Main", "Word", word);
    return word;
  }
};

TEST_F(ReferenceTest, CarriesAProtocolWholeInBothSpellings) {
  for (const Markers markers : {Markers::Standard, Markers::Alternate}) {
    std::string id;
    const std::string text = Reference(id, markers);
    std::string found;
    EXPECT_TRUE(VXProtocol::ExtractProtocolID(text, found, markers));
    EXPECT_EQ(found, id);
    VXProtocol other(context, Stored());
    EXPECT_TRUE(other.PutBufferFromReference(text + "tail", markers));
    std::string word;
    EXPECT_TRUE(other.GetKeyWord("Main", "Word", word));
    EXPECT_EQ(word, "a<@EL>;\r\nb<@PID>");
    const Markers wrong = markers == Markers::Standard ? Markers::Alternate : Markers::Standard;
    EXPECT_FALSE(VXProtocol::ExtractProtocolID(text, found, wrong));
    EXPECT_FALSE(other.PutBufferFromReference(text, wrong));
  }
}

TEST_F(ReferenceTest, TheStoredObjectIdentityComesFirst) {
  VXProtocol protocol(context, Stored());
  protocol.PutKeyWord("Object", "ProtID", "OBJ1");
  std::string text;
  EXPECT_TRUE(protocol.MakeReference(text, Markers::Standard));
  EXPECT_TRUE(text.starts_with("OBJ1<@PID>"));
}

TEST_F(ReferenceTest, OpeningMakesAMissingProtocolAnew) {
  std::string id;
  const std::string text = Reference(id);
  VXProtocol(context, id).Erase();
  {
    VXProtocol protocol(context);
    EXPECT_EQ(protocol.OpenFromReference(text, false, Markers::Standard), 1);
    EXPECT_EQ(protocol.GetProtocolID(), id);
    EXPECT_TRUE(protocol.IsReady());
  }
  EXPECT_EQ(WordOf(id), "a<@EL>;\r\nb<@PID>");
  VXProtocol protocol(context);
  EXPECT_EQ(protocol.OpenFromReference("no marker", false, Markers::Standard), 0);
}

TEST_F(ReferenceTest, AStoredProtocolWithoutAnOwnerIsReplaced) {
  std::string id;
  const std::string text = Reference(id);
  {
    VXProtocol changed(context, id);
    changed.PutKeyWord("Main", "Word", "newer");
    changed.PutKeyWord("Main", "Extra", "newer");
    changed.PutGlobalData("OwnerHWND", "2147483647");  // a window that is gone
  }
  VXProtocol protocol(context);
  EXPECT_EQ(protocol.OpenFromReference(text, false, Markers::Standard), 1);
  std::string word;
  EXPECT_TRUE(protocol.GetKeyWord("Main", "Word", word));
  EXPECT_EQ(word, "a<@EL>;\r\nb<@PID>");
  EXPECT_FALSE(protocol.GetKeyWord("Main", "Extra", word));
}

class SilentWindow : public platform::WindowHandler {
 public:
  void OnMessage(unsigned) override {}
  void OnShown() override {}
};

TEST_F(ReferenceTest, AProtocolWithALiveOwnerStaysAsItIs) {
  SilentWindow handler;
  const auto window = platform::HiddenWindow::Create(nullptr, 0, handler);
  ASSERT_NE(window, nullptr);
  std::string id;
  const std::string text = Reference(id);
  {
    VXProtocol owned(context, id);
    owned.PutKeyWord("Main", "Word", "newer");
    owned.PutGlobalData("OwnerHWND", std::to_string(static_cast<int>(window->Handle())));
  }
  {
    VXProtocol quiet(context);
    EXPECT_EQ(quiet.OpenFromReference(text, false, Markers::Standard), 1);
    EXPECT_FALSE(quiet.IsReady());
    EXPECT_FALSE(quiet.OwnerActive());
    VXProtocol activating(context);
    EXPECT_EQ(activating.OpenFromReference(text, true, Markers::Standard), 0);
    EXPECT_TRUE(activating.OwnerActive());
  }
  EXPECT_EQ(WordOf(id), "newer");
}

TEST_F(ReferenceTest, TheClipboardIsOneFixedProtocol) {
  std::string id;
  const std::string text = Reference(id);
  VXProtocol clipboard(context);
  EXPECT_EQ(clipboard.OpenClipboardReference("no marker", false), 0);
  EXPECT_EQ(clipboard.OpenClipboardReference(text, false), 1);
  EXPECT_EQ(clipboard.GetProtocolID(), "KEELCLIP");
  EXPECT_TRUE(clipboard.ReopenClipboard());
  std::string word;
  EXPECT_TRUE(clipboard.GetKeyWord("Main", "Word", word));
}

}  // namespace
}  // namespace quillmar
