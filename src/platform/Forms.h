// Dialogs described by their fields: what each control shows at first and, when the user confirms,
// what it holds then. One dialog, or several as the pages of a property sheet.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Dialogs.h"
#include "quillmar/OptionsPage.h"

namespace quillmar::platform {

enum class FieldKind {
  Text,    // an edit field; with `items` a list behind it (next identifier), whose choice goes in
           // where the user types
  Check,   // `number` is 0 or 1
  Radio,   // buttons with consecutive identifiers; `number` is the index of the chosen one
  Choice,  // a list; `number` is the index in `items`, -1 for none
  Entry,   // a list with a field to type into: `number`, or -1 and what was typed in `text`
  Rows,    // lines of two texts; see RowControl
  Button   // does its `press` while the dialog stays open, and holds nothing
};

// Controls of a Rows field, counted from its own identifier, which is the list's.
enum RowControl {
  kRowFirst = 1,   // first text of the line that is edited; offers `firstTexts`
  kRowSecond = 2,  // its second text
  kRowItems = 3,   // list of `items`, which go into the second text
  kRowSet = 4,     // adds the line, or replaces the one with the same first text
  kRowRemove = 5
};

struct FormRow {
  std::string first;
  std::string second;
  bool readOnly = false;
};

struct FormField {
  FieldKind kind = FieldKind::Text;
  std::string name;  // what scripts of a machine without screen call it
  int control = 0;   // identifier in the template
  std::string text{};
  int number = 0;
  std::vector<std::string> items{};
  std::vector<FormRow> rows{};
  std::vector<std::string> headings{};  // two, of Rows
  std::vector<std::string> firstTexts{};
  bool shown = true;              // false hides the control, and what it held stays
  std::vector<int> companions{};  // further controls that are hidden with it
  std::function<void(QmWindow owner)> press{};
};

struct Form {
  std::string title;  // empty: the template's caption
  int dialogTemplate = 0;
  std::vector<FormField> fields;
  // Asked when the user confirms, with the fields as he left them; false keeps the dialog open.
  std::function<bool(Form&)> accept{};

  FormField& Field(const std::string& name);
};

// Where dialogs come from and belong to.
struct DialogSurroundings {
  QmModule resources = nullptr;
  QmWindow owner = 0;
  DialogTranslation translate{};
};

// Both are modal and true when the user confirmed; the fields are then as he left them, and as
// they were when he cancelled.
bool ShowForm(const DialogSurroundings& surroundings, Form& form);

struct Sheet {
  std::string title;
  std::vector<std::variant<Form, QmOptionsPage>> pages;  // without pages nothing is shown
  std::string helpFile;                                  // empty: no Help button on our own pages
  unsigned helpContext = 0;
};
bool ShowSheet(const DialogSurroundings& surroundings, Sheet& sheet);

// A copy of memory that may not be there; false when it cannot be read whole. At most 4096 bytes.
bool ReadForeignMemory(const void* from, void* to, std::size_t size);

}  // namespace quillmar::platform
