#include "UserDialog.h"

#include <gtest/gtest.h>

#include "platform/native/Machine.h"

namespace quillmar::contract {

struct UserDialog::State {
  std::size_t shownBefore;
};

UserDialog::UserDialog() : state(new State{platform::Machine::Current().Shown().size()}) {}

UserDialog::UserDialog(const std::string& name, const std::string& views, int units)
    : UserDialog() {
  platform::Machine::Current().Answers().userParts.push_back({name, views, units});
}

UserDialog::~UserDialog() {
  const auto& shown = platform::Machine::Current().Shown();
  EXPECT_EQ(shown.size(), state->shownBefore + 1) << "dialogs shown";
  EXPECT_TRUE(platform::Machine::Current().Answers().userParts.empty());
  delete state;
}

// The machine cancels what no answer was laid down for.
UserWhoLeaves::UserWhoLeaves() : state(nullptr) {}
UserWhoLeaves::~UserWhoLeaves() = default;

}  // namespace quillmar::contract
