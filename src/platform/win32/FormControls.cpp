#include "platform/win32/FormControls.h"

#include <algorithm>

#include "platform/win32/TemplateDialog.h"

// The list control; after the system's header.
#include <commctrl.h>

namespace quillmar::platform::win32 {
namespace {

constexpr int kFirstColumnPercent = 40;

LRESULT Send(HWND dialog, int control, UINT message, WPARAM first = 0,
             const void* second = nullptr) {
  return SendDlgItemMessageA(dialog, control, message, first, reinterpret_cast<LPARAM>(second));
}

void FillList(HWND dialog, int control, const std::vector<std::string>& items) {
  Send(dialog, control, CB_RESETCONTENT);
  for (const std::string& item : items) Send(dialog, control, CB_ADDSTRING, 0, item.c_str());
}

void InsertRow(HWND list, int index, const FormRow& row) {
  LVITEMA item{};
  item.mask = LVIF_TEXT;
  item.iItem = index;
  std::string text = row.first;
  item.pszText = text.data();
  SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
  text = row.second;
  item.iSubItem = 1;
  item.pszText = text.data();
  SendMessageA(list, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void FillRows(HWND dialog, const FormField& field) {
  const HWND list = GetDlgItem(dialog, field.control);
  ListView_DeleteAllItems(list);
  for (std::size_t i = 0; i < field.rows.size(); ++i) {
    InsertRow(list, static_cast<int>(i), field.rows[i]);
  }
}

void MakeRowControls(HWND dialog, const FormField& field) {
  const HWND list = GetDlgItem(dialog, field.control);
  RECT room{};
  GetClientRect(list, &room);
  const int width = static_cast<int>(room.right) - GetSystemMetrics(SM_CXVSCROLL);
  const int first = width * kFirstColumnPercent / 100;
  for (int column = 0; column < 2; ++column) {
    std::string heading = field.headings.at(static_cast<std::size_t>(column));
    LVCOLUMNA description{};
    description.mask = LVCF_TEXT | LVCF_WIDTH;
    description.cx = column == 0 ? first : width - first;
    description.pszText = heading.data();
    SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
  }
  FillRows(dialog, field);
  FillList(dialog, field.control + kRowFirst, field.firstTexts);
  FillList(dialog, field.control + kRowItems, field.items);
}

void FillControl(HWND dialog, const FormField& field) {
  const auto number = static_cast<WPARAM>(field.number);
  switch (field.kind) {
    case FieldKind::Text:
      SetDlgItemTextA(dialog, field.control, field.text.c_str());
      if (!field.items.empty()) FillList(dialog, field.control + 1, field.items);
      break;
    case FieldKind::Check:
      CheckDlgButton(dialog, field.control, field.number != 0 ? BST_CHECKED : BST_UNCHECKED);
      break;
    case FieldKind::Radio:
      CheckDlgButton(dialog, field.control + field.number, BST_CHECKED);
      break;
    case FieldKind::Choice:
    case FieldKind::Entry:
      FillList(dialog, field.control, field.items);
      Send(dialog, field.control, CB_SETCURSEL, number);
      break;
    case FieldKind::Rows:
      MakeRowControls(dialog, field);
      break;
    case FieldKind::Button:
      break;
  }
}

// The highest identifier that belongs to a field, counted from its first.
int LastControl(const FormField& field) {
  switch (field.kind) {
    case FieldKind::Text:
      return field.items.empty() ? 0 : 1;
    case FieldKind::Radio:
      return static_cast<int>(field.items.size()) - 1;
    case FieldKind::Rows:
      return kRowRemove;
    default:
      return 0;
  }
}

void HideControls(HWND dialog, const FormField& field) {
  for (int i = 0; i <= LastControl(field); ++i) {
    ShowWindow(GetDlgItem(dialog, field.control + i), SW_HIDE);
  }
  for (const int control : field.companions) ShowWindow(GetDlgItem(dialog, control), SW_HIDE);
}

void ReadEntry(HWND dialog, FormField& field) {
  field.text = ControlText(dialog, field.control);
  const auto found = std::find(field.items.begin(), field.items.end(), field.text);
  field.number = found != field.items.end() ? static_cast<int>(found - field.items.begin()) : -1;
}

void ReadControl(HWND dialog, FormField& field) {
  switch (field.kind) {
    case FieldKind::Text:
      field.text = ControlText(dialog, field.control);
      break;
    case FieldKind::Check:
      field.number = IsDlgButtonChecked(dialog, field.control) == BST_CHECKED ? 1 : 0;
      break;
    case FieldKind::Radio:
      for (int i = 0; i <= LastControl(field); ++i) {
        if (IsDlgButtonChecked(dialog, field.control + i) == BST_CHECKED) field.number = i;
      }
      break;
    case FieldKind::Choice:
      field.number = static_cast<int>(Send(dialog, field.control, CB_GETCURSEL));
      break;
    case FieldKind::Entry:
      ReadEntry(dialog, field);
      break;
    case FieldKind::Rows:  // changes are made in the field itself
    case FieldKind::Button:
      break;
  }
}

// Puts a chosen item where the user types.
void InsertChosen(HWND dialog, int list, int edit, const std::vector<std::string>& items) {
  const auto chosen = static_cast<std::size_t>(Send(dialog, list, CB_GETCURSEL));
  if (chosen < items.size()) Send(dialog, edit, EM_REPLACESEL, TRUE, items[chosen].c_str());
}

void SetRow(HWND dialog, FormField& field) {
  const FormRow row{ControlText(dialog, field.control + kRowFirst),
                    ControlText(dialog, field.control + kRowSecond)};
  if (row.first.empty()) return;
  const auto found = std::find_if(field.rows.begin(), field.rows.end(),
                                  [&](const FormRow& old) { return old.first == row.first; });
  if (found == field.rows.end()) {
    field.rows.push_back(row);
  } else if (!found->readOnly) {
    *found = row;
  }
  FillRows(dialog, field);
}

std::size_t SelectedRow(HWND dialog, const FormField& field) {
  return static_cast<std::size_t>(
      ListView_GetNextItem(GetDlgItem(dialog, field.control), -1, LVNI_SELECTED));
}

void RemoveRow(HWND dialog, FormField& field) {
  const std::size_t selected = SelectedRow(dialog, field);
  if (selected >= field.rows.size() || field.rows[selected].readOnly) return;
  field.rows.erase(field.rows.begin() + static_cast<std::ptrdiff_t>(selected));
  FillRows(dialog, field);
}

}  // namespace

void FillControls(HWND dialog, const Form& form) {
  for (const FormField& field : form.fields) {
    FillControl(dialog, field);
    if (!field.shown) HideControls(dialog, field);
  }
}

void ReadControls(HWND dialog, Form& form) {
  for (FormField& field : form.fields) {
    if (field.shown) ReadControl(dialog, field);
  }
}

void OnControl(HWND dialog, Form& form, int control, int code) {
  for (FormField& field : form.fields) {
    const int part = control - field.control;
    if (field.kind == FieldKind::Text && part == 1 && code == CBN_SELCHANGE) {
      InsertChosen(dialog, control, field.control, field.items);
    } else if (field.kind == FieldKind::Rows && part == kRowItems && code == CBN_SELCHANGE) {
      InsertChosen(dialog, control, field.control + kRowSecond, field.items);
    } else if (field.kind == FieldKind::Rows && part == kRowSet && code == BN_CLICKED) {
      SetRow(dialog, field);
    } else if (field.kind == FieldKind::Rows && part == kRowRemove && code == BN_CLICKED) {
      RemoveRow(dialog, field);
    } else if (field.kind == FieldKind::Button && part == 0 && code == BN_CLICKED) {
      field.press(ToWindow(dialog));
    }
  }
}

void OnListSelection(HWND dialog, Form& form, int control) {
  for (FormField& field : form.fields) {
    if (field.kind != FieldKind::Rows || field.control != control) continue;
    const std::size_t selected = SelectedRow(dialog, field);
    if (selected >= field.rows.size()) return;
    SetDlgItemTextA(dialog, control + kRowFirst, field.rows[selected].first.c_str());
    SetDlgItemTextA(dialog, control + kRowSecond, field.rows[selected].second.c_str());
  }
}

}  // namespace quillmar::platform::win32
