// Dialogs of a machine without screen: they are noted with all that they show, and answered by the
// machine's script.
#include "platform/Forms.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <charconv>

#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

std::string ShownValue(const FormField& field) {
  switch (field.kind) {
    case FieldKind::Text:
      return field.text;
    case FieldKind::Check:
    case FieldKind::Radio:
      return std::to_string(field.number);
    case FieldKind::Choice:
    case FieldKind::Entry: {
      const auto index = static_cast<std::size_t>(field.number);
      return field.number >= 0 && index < field.items.size() ? field.items[index] : field.text;
    }
    case FieldKind::Rows:
      break;
    case FieldKind::Button:
      return {};
  }
  std::string lines;
  for (const FormRow& row : field.rows) lines += row.first + "=" + row.second + ";";
  return lines;
}

void NoteFields(const Form& form, std::string& text) {
  for (const FormField& field : form.fields) {
    if (field.shown) text += field.name + ": " + ShownValue(field) + "\n";
  }
}

void ChooseItem(FormField& field, const std::string& answer) {
  field.number = -1;
  for (std::size_t i = 0; i < field.items.size(); ++i) {
    if (field.items[i] == answer) field.number = static_cast<int>(i);
  }
  if (field.kind == FieldKind::Entry) field.text = answer;
}

// "first=second;" for each line; lines that cannot be changed stay.
void SetRows(FormField& field, std::string_view answer) {
  std::erase_if(field.rows, [](const FormRow& row) { return !row.readOnly; });
  while (!answer.empty()) {
    const std::string_view line = answer.substr(0, answer.find(';'));
    answer.remove_prefix(std::min(answer.size(), line.size() + 1));
    const auto middle = line.find('=');
    if (middle == std::string_view::npos) continue;
    field.rows.push_back(
        {std::string(line.substr(0, middle)), std::string(line.substr(middle + 1))});
  }
}

void AnswerField(FormField& field, const std::string& answer) {
  switch (field.kind) {
    case FieldKind::Text:
      field.text = answer;
      break;
    case FieldKind::Check:
    case FieldKind::Radio:
      std::from_chars(answer.data(), answer.data() + answer.size(), field.number);
      break;
    case FieldKind::Choice:
    case FieldKind::Entry:
      ChooseItem(field, answer);
      break;
    case FieldKind::Rows:
      SetRows(field, answer);
      break;
    case FieldKind::Button:
      field.press(0);
      break;
  }
}

void AnswerFields(Form& form, const FormAnswer& answer) {
  for (FormField& field : form.fields) {
    const auto found = answer.find(field.name);
    if (field.shown && found != answer.end()) AnswerField(field, found->second);
  }
}

bool Accepts(Form& form) { return !form.accept || form.accept(form); }
bool Accepts(QmOptionsPage& page) { return page.onEvent(page.context, QM_PAGE_VALIDATE, 0) != 0; }

void Tell(Sheet& sheet, QmPageEvent event) {
  for (auto& page : sheet.pages) {
    if (auto* foreign = std::get_if<QmOptionsPage>(&page)) {
      foreign->onEvent(foreign->context, event, 0);
    }
  }
}

void NoteDialog(const char* kind, const std::string& title, const std::string& text) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  machine.shown.push_back({kind, title, text});
}

std::optional<FormAnswer> NextFormAnswer() {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  if (machine.answers.forms.empty()) return std::nullopt;
  FormAnswer answer = std::move(machine.answers.forms.front());
  machine.answers.forms.pop_front();
  return answer;
}

class Pipe {
 public:
  Pipe() {
    if (pipe2(ends, O_CLOEXEC) != 0) ends[0] = ends[1] = -1;
  }
  ~Pipe() {
    for (const int end : ends) {
      if (end >= 0) close(end);
    }
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int ends[2] = {-1, -1};
};

}  // namespace

bool ShowForm(const DialogSurroundings&, Form& form) {
  std::string text;
  NoteFields(form, text);
  NoteDialog("form", form.title, text);
  Form edited = form;
  while (const auto answer = NextFormAnswer()) {
    AnswerFields(edited, *answer);
    if (!Accepts(edited)) continue;
    form = std::move(edited);
    return true;
  }
  return false;
}

bool ShowSheet(const DialogSurroundings&, Sheet& sheet) {
  if (sheet.pages.empty()) return false;
  std::string text;
  for (const auto& page : sheet.pages) {
    if (const auto* form = std::get_if<Form>(&page)) {
      text += "[" + form->title + "]\n";
      NoteFields(*form, text);
    } else {
      const char* title = std::get<QmOptionsPage>(page).title;
      text += "[" + std::string(title != nullptr ? title : "") + "]\n";
    }
  }
  NoteDialog("sheet", sheet.title, text);
  Tell(sheet, QM_PAGE_OPEN);
  Sheet edited = sheet;
  while (const auto answer = NextFormAnswer()) {
    bool accepted = true;
    for (auto& page : edited.pages) {
      if (auto* form = std::get_if<Form>(&page)) AnswerFields(*form, *answer);
    }
    for (auto& page : edited.pages) {
      accepted = accepted && std::visit([](auto& one) { return Accepts(one); }, page);
    }
    if (!accepted) continue;
    sheet = std::move(edited);
    Tell(sheet, QM_PAGE_ACCEPT);
    return true;
  }
  Tell(sheet, QM_PAGE_CANCEL);
  return false;
}

// The system refuses to write what the process cannot read, instead of ending it. It is called
// directly: a sanitizer would look at the memory first.
bool ReadForeignMemory(const void* from, void* to, std::size_t size) {
  const Pipe pipe;
  const auto wanted = static_cast<ssize_t>(size);
  return pipe.ends[1] >= 0 && syscall(SYS_write, pipe.ends[1], from, size) == wanted &&
         read(pipe.ends[0], to, size) == wanted;
}

}  // namespace quillmar::platform
