#include "FormUser.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <optional>
#include <thread>
#include <utility>

// The system's headers, of which the first must come first.
#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

namespace quillmar::contract {

const bool kDialogsAreWindows = true;

QmModule PageResources() { return GetModuleHandleA("Quillmar.dll"); }

namespace {

constexpr int kPause = 10;        // milliseconds
constexpr int kAnswerTries = 80;  // pauses until a dialog that stays is taken for refused
constexpr int kMessageText = 0xFFFF;
constexpr int kAboutText = 101;

enum class Kind { Text, Check, Radio, Choice, Rows, Button };

struct Field {
  const char* place;  // tab of a sheet, title of a dialog
  const char* name;
  int control;  // identifier in the library's templates
  Kind kind;
};

constexpr Field kFields[] = {
    {"File names", "OptGeneral2.LocalFileName", 110, Kind::Text},
    {"File names", "OptGeneral2.LocalFolderType", 112, Kind::Choice},
    {"File names", "OptGeneral2.LocalFolder", 113, Kind::Text},
    {"File names", "OptGeneral2.LocalStructure", 114, Kind::Check},
    {"File names", "OptGeneral2.LocalWorkspaceSubFolder", 115, Kind::Text},
    {"File names", "OptGeneral2.LocalLibrary", 116, Kind::Text},
    {"File names", "OptGeneral2.SharedFileName", 130, Kind::Text},
    {"File names", "OptGeneral2.SharedFolderType", 132, Kind::Choice},
    {"File names", "OptGeneral2.SharedFolder", 133, Kind::Text},
    {"File names", "OptGeneral2.SharedStructure", 134, Kind::Check},
    {"File names", "OptGeneral2.SharedWorkspaceSubFolder", 135, Kind::Text},
    {"File names", "OptGeneral2.SharedLibrary", 136, Kind::Text},
    {"File names", "OptGeneral2.ReplaceSpaces", 101, Kind::Radio},
    {"File names", "OptGeneral.Depths", 150, Kind::Button},
    {"Bill of materials", "OptBom.TitleExt", 101, Kind::Text},
    {"Bill of materials", "OptBom.MakeUpperCase", 103, Kind::Check},
    {"Bill of materials", "OptBom.ReplaceSpaces", 104, Kind::Radio},
    {"Bill of materials", "OptBom.DefaultTags", 108, Kind::Check},
    {"Bill of materials", "OptBom.Tags", 110, Kind::Rows},
    {"Calculation window", "OptKC.UseKCWindow", 101, Kind::Check},
    {"Calculation window", "OptKC.ActivateWindow", 102, Kind::Check},
    {"Calculation window", "OptKC.ShowText", 103, Kind::Check},
    {"Calculation window", "OptKC.IconView", 104, Kind::Check},
    {"Calculation window", "OptKC.PicSize", 105, Kind::Text},
    {"Depth of scans", "DepthParIdx", 101, Kind::Choice},
    {"Depth of scans", "DepthChiIdx", 102, Kind::Choice},
    {"Mine", "Mine.Check", 101, Kind::Check},
};
constexpr int kRadioButtons = 3;
// Controls of Rows, counted from the list.
enum RowPart { kFirst = 1, kSecond = 2, kSet = 4, kRemove = 5 };

LRESULT Send(HWND window, UINT message, WPARAM first = 0, const void* second = nullptr) {
  return SendMessageA(window, message, first, reinterpret_cast<LPARAM>(second));
}

std::string TextOf(HWND window) {
  std::string text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, '\0');
  text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), text.data())));
  return text;
}

bool IsThere(HWND control) {
  return control != nullptr && (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

std::string RowsOf(HWND list) {
  std::string rows;
  const int count = ListView_GetItemCount(list);
  for (int row = 0; row < count; ++row) {
    for (int column = 0; column < 2; ++column) {
      char text[256] = "";
      LVITEMA item{};
      item.iSubItem = column;
      item.pszText = text;
      item.cchTextMax = sizeof text;
      Send(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), &item);
      rows += text + std::string(column == 0 ? "=" : ";");
    }
  }
  return rows;
}

std::string ValueOf(HWND page, const Field& field) {
  const HWND control = GetDlgItem(page, field.control);
  switch (field.kind) {
    case Kind::Check:
      return std::to_string(Send(control, BM_GETCHECK));
    case Kind::Radio:
      for (int i = 0; i < kRadioButtons; ++i) {
        if (Send(GetDlgItem(page, field.control + i), BM_GETCHECK) != 0) return std::to_string(i);
      }
      return "";
    case Kind::Rows:
      return RowsOf(control);
    case Kind::Button:
      return "";
    default:
      return TextOf(control);
  }
}

void EnterRows(HWND page, int control, std::string rows) {
  const HWND list = GetDlgItem(page, control);
  for (int row = ListView_GetItemCount(list) - 1; row >= 0; --row) {
    ListView_SetItemState(list, row, LVIS_SELECTED, LVIS_SELECTED);
    Send(GetDlgItem(page, control + kRemove), BM_CLICK);
  }
  while (!rows.empty()) {
    const auto middle = rows.find('=');
    const auto end = rows.find(';');
    Send(GetDlgItem(page, control + kFirst), WM_SETTEXT, 0, rows.substr(0, middle).c_str());
    Send(GetDlgItem(page, control + kSecond), WM_SETTEXT, 0,
         rows.substr(middle + 1, end - middle - 1).c_str());
    Send(GetDlgItem(page, control + kSet), BM_CLICK);
    rows.erase(0, end + 1);
  }
}

// An item of the list or, where one can type, any text.
void EnterChoice(HWND list, const std::string& text) {
  const LRESULT item = Send(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text.c_str());
  if (item == CB_ERR) {
    Send(list, WM_SETTEXT, 0, text.c_str());
  } else {
    Send(list, CB_SETCURSEL, static_cast<WPARAM>(item));
  }
}

HWND CurrentPage(HWND sheet) { return reinterpret_cast<HWND>(Send(sheet, PSM_GETCURRENTPAGEHWND)); }

}  // namespace

// A thread of its own, while the dialogs keep the test's.
struct FormUser::State {
  explicit State(std::vector<Entries> all)
      : entries(all.begin(), all.end()), asked(GetCurrentThreadId()), hand([this] { Work(); }) {}

  void Work() {
    while (!gone) {
      if (const HWND dialog = NewDialog()) Handle(dialog);
      Sleep(kPause);
    }
  }

  // A dialog beside those that are being worked.
  HWND NewDialog() {
    found = nullptr;
    EnumThreadWindows(asked, Look, reinterpret_cast<LPARAM>(this));
    return found;
  }

  static BOOL CALLBACK Look(HWND window, LPARAM parameter) {
    auto& self = *reinterpret_cast<State*>(parameter);
    char kind[16] = "";
    GetClassNameA(window, kind, sizeof kind);
    const bool isNew = std::find(self.open.begin(), self.open.end(), window) == self.open.end();
    if (!isNew || std::string(kind) != "#32770" || IsWindowVisible(window) == 0) return TRUE;
    self.found = window;
    return FALSE;
  }

  void Handle(HWND dialog) {
    const HWND tabs = reinterpret_cast<HWND>(Send(dialog, PSM_GETTABCONTROL));
    const std::size_t place = seen.size();
    seen.push_back({TextOf(dialog), ""});
    open.push_back(dialog);
    const bool asks = tabs != nullptr || HasFields(dialog, seen[place].title);
    bool first = true;
    do {
      const std::optional<Entries> next = asks ? NextEntries() : std::nullopt;
      std::string shown = tabs != nullptr ? WorkPages(dialog, tabs, next)
                                          : WorkPage(dialog, seen[place].title, next);
      if (std::exchange(first, false)) seen[place].text = shown;
      PostMessageA(dialog, WM_COMMAND, next ? IDOK : IDCANCEL, 0);
    } while (!IsClosed(dialog));
    open.pop_back();
  }

  static bool HasFields(HWND page, const std::string& place) {
    return std::any_of(std::begin(kFields), std::end(kFields), [&](const Field& field) {
      return place == field.place && GetDlgItem(page, field.control) != nullptr;
    });
  }

  std::optional<Entries> NextEntries() {
    if (entries.empty()) return std::nullopt;
    Entries next = std::move(entries.front());
    entries.pop_front();
    return next;
  }

  std::string WorkPages(HWND sheet, HWND tabs, const std::optional<Entries>& next) {
    std::string shown;
    const auto count = static_cast<WPARAM>(Send(tabs, TCM_GETITEMCOUNT));
    for (WPARAM i = 0; i < count; ++i) {
      char title[64] = "";
      TCITEMA item{};
      item.mask = TCIF_TEXT;
      item.pszText = title;
      item.cchTextMax = sizeof title;
      Send(tabs, TCM_GETITEMA, i, &item);
      Send(sheet, PSM_SETCURSEL, i);
      shown += "[" + std::string(title) + "]\n" + WorkPage(CurrentPage(sheet), title, next);
    }
    return shown;
  }

  // What the page shows before anything is entered.
  std::string WorkPage(HWND page, const std::string& place, const std::optional<Entries>& next) {
    std::string shown;
    for (const Field& field : kFields) {
      if (place != field.place || !IsThere(GetDlgItem(page, field.control))) continue;
      shown += field.name + std::string(": ") + ValueOf(page, field) + "\n";
      if (!next) continue;
      const auto entry = next->find(field.name);
      if (entry != next->end()) Enter(page, field, entry->second);
    }
    for (const int text : {kAboutText, kMessageText}) {
      if (shown.empty() && GetDlgItem(page, text) != nullptr)
        shown = TextOf(GetDlgItem(page, text));
    }
    return shown;
  }

  void Enter(HWND page, const Field& field, const std::string& value) {
    const HWND control = GetDlgItem(page, field.control);
    switch (field.kind) {
      case Kind::Text:
        Send(control, WM_SETTEXT, 0, value.c_str());
        break;
      case Kind::Check:
        if (value != ValueOf(page, field)) Send(control, BM_CLICK);
        break;
      case Kind::Radio:
        Send(GetDlgItem(page, field.control + std::stoi(value)), BM_CLICK);
        break;
      case Kind::Choice:
        EnterChoice(control, value);
        break;
      case Kind::Rows:
        EnterRows(page, field.control, value);
        break;
      case Kind::Button:
        PostMessageA(control, BM_CLICK, 0, 0);
        HandleNext();
        break;
    }
  }

  void HandleNext() {
    HWND dialog = nullptr;
    for (int i = 0; i < kAnswerTries && dialog == nullptr; ++i) {
      Sleep(kPause);
      dialog = NewDialog();
    }
    if (dialog != nullptr) Handle(dialog);
  }

  // False when the dialog stays, perhaps after a box that says why.
  bool IsClosed(HWND dialog) {
    for (int i = 0; i < kAnswerTries; ++i) {
      Sleep(kPause);
      if (IsWindow(dialog) == 0 || IsWindowVisible(dialog) == 0) return true;
      if (const HWND box = NewDialog()) {
        Handle(box);
        return false;
      }
    }
    return false;
  }

  std::deque<Entries> entries;
  std::vector<SeenDialog> seen;
  std::vector<HWND> open;
  HWND found = nullptr;
  DWORD asked;
  std::atomic<bool> gone = false;
  std::thread hand;
};

FormUser::FormUser(std::vector<Entries> entries)
    : state(std::make_unique<State>(std::move(entries))) {}

FormUser::~FormUser() { Leave(); }

std::vector<SeenDialog> FormUser::Leave() {
  state->gone = true;
  if (state->hand.joinable()) state->hand.join();
  return std::move(state->seen);
}

}  // namespace quillmar::contract
