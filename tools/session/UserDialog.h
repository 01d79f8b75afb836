// The user in front of the dialog that asks for the name, views and units of a user part.
#pragma once

#include <memory>
#include <string>

namespace session {

// Answers the next such dialog of this process while the object lives.
class UserDialog {
 public:
  UserDialog(const std::string& name, const std::string& views, int units);
  ~UserDialog();
  UserDialog(const UserDialog&) = delete;
  UserDialog& operator=(const UserDialog&) = delete;

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace session
