// The user, who is asked for the name, views and units of a part.
#pragma once

#include <string>

namespace quillmar::contract {

// Answers the next dialog for a user part. Without it a dialog is cancelled.
class UserDialog {
 public:
  UserDialog(const std::string& name, const std::string& views, int units);
  // The user who cancels.
  UserDialog();
  // The dialog must have been answered by now.
  ~UserDialog();
  UserDialog(const UserDialog&) = delete;
  UserDialog& operator=(const UserDialog&) = delete;

 private:
  struct State;
  State* state;
};

// As long as it lives, dialogs of every kind are closed without an answer.
class UserWhoLeaves {
 public:
  UserWhoLeaves();
  ~UserWhoLeaves();
  UserWhoLeaves(const UserWhoLeaves&) = delete;
  UserWhoLeaves& operator=(const UserWhoLeaves&) = delete;

 private:
  struct State;
  State* state;
};

}  // namespace quillmar::contract
