// The user at the library's dialogs: what he enters, and what he saw.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "quillmar/Conventions.h"

namespace quillmar::contract {

// What is entered, by names of fields: an item or a typed text, "0" and "1" of a check box, the
// index of a button of several, "first=second;" for each row, anything to press a button.
using Entries = std::map<std::string, std::string>;

struct SeenDialog {
  std::string title;
  std::string
      text;  // of a sheet or form "name: value\n" for each field, of a sheet its tabs as "[tab]\n"
};

// Works the sheets, forms and boxes that appear while it lives. Each try to confirm one takes the
// next entries; without entries it is cancelled.
class FormUser {
 public:
  explicit FormUser(std::vector<Entries> entries = {});
  ~FormUser();
  FormUser(const FormUser&) = delete;
  FormUser& operator=(const FormUser&) = delete;

  // All that was shown, in order. The user is gone afterwards.
  std::vector<SeenDialog> Leave();

 private:
  struct State;
  std::unique_ptr<State> state;
};

// True where dialogs are windows: pages are opened when they are looked at, and asked when they
// are left.
extern const bool kDialogsAreWindows;

// A dialog that a page of the caller can be made from. As "Mine" it has the field "Mine.Check".
QmModule PageResources();
constexpr int kPageTemplate = 4006;

}  // namespace quillmar::contract
