#include "session/UserDialog.h"

#include "platform/native/Machine.h"

namespace session {

using quillmar::platform::Machine;

// The machine answers from its script.
struct UserDialog::State {};

UserDialog::UserDialog(const std::string& name, const std::string& views, int units)
    : state(std::make_unique<State>()) {
  Machine::Current().Answers().userParts.push_back({name, views, units});
}

// An answer that nobody asked for must not meet the next dialog.
UserDialog::~UserDialog() { Machine::Current().Answers().userParts.clear(); }

}  // namespace session
