// How far a scan has come is shown; on this target the machine knows what was shown.
#include <algorithm>

#include "Calculation.h"
#include "platform/Messages.h"
#include "platform/native/Machine.h"

namespace quillmar::contract {
namespace {

class Progress : public Calculation {};

TEST_F(Progress, AScanCountsTheProtocols) {
  std::string reference;
  {
    Record child;
    Record selected;
    Fill(child, kShaft);
    Fill(selected, kShaft);
    selected.SetKeyWord("LinksTo", child.Id().c_str(), "d");
    reference = selected.Reference();
    strict::Core().Strict_SetAnswer(("GetProtocol(" + child.Id() + ").text").c_str(),
                                    child.Reference().c_str());
  }
  strict::Core().Strict_SetAnswer("GetPart.partName", "Selected:1");
  strict::Core().Strict_SetAnswer("GetPart.text", reference.c_str());
  strict::Core().Strict_SetAnswer("GetProtocol(Selected:1).text", reference.c_str());
  auto& shown = platform::Machine::Current().Shown();
  shown.clear();
  module.CallUTFunction(8);
  platform::PumpMessages();
  const auto window = std::find_if(shown.begin(), shown.end(),
                                   [](const auto& dialog) { return dialog.kind == "progress"; });
  ASSERT_NE(window, shown.end());
  EXPECT_EQ(window->text, "1") << "counted from 0";
}

}  // namespace
}  // namespace quillmar::contract
