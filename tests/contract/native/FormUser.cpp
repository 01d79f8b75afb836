#include "FormUser.h"

#include "platform/native/Machine.h"

namespace quillmar::contract {

using platform::Machine;

const bool kDialogsAreWindows = false;

QmModule PageResources() { return nullptr; }

struct FormUser::State {};

FormUser::FormUser(std::vector<Entries> entries) {
  Machine::Current().Shown().clear();
  Machine::Current().Answers().forms = {entries.begin(), entries.end()};
}

FormUser::~FormUser() { Machine::Current().Answers().forms.clear(); }

std::vector<SeenDialog> FormUser::Leave() {
  std::vector<SeenDialog> seen;
  for (const auto& dialog : Machine::Current().Shown()) seen.push_back({dialog.title, dialog.text});
  return seen;
}

}  // namespace quillmar::contract
