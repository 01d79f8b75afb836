#include "platform/Dialogs.h"

#include <deque>

#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

void Record(Machine::State& machine, const char* kind, const std::string& title,
            const std::string& text) {
  machine.shown.push_back({kind, title, text});
}

template <class Answer>
std::optional<Answer> NextAnswer(std::deque<Answer>& answers) {
  if (answers.empty()) return std::nullopt;
  Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::string WithoutTrailingBackslash(std::string folder) {
  while (folder.size() > 1 && folder.back() == '\\' && folder[folder.size() - 2] != ':') {
    folder.pop_back();
  }
  return folder;
}

}  // namespace

void ShowMessage(const std::string& text, const std::string& title, MessageIcon) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  Record(machine, "message", title, text);
}

bool ShowAbout(QmModule, QmWindow, const std::string& title, const std::string& text,
               const DialogTranslation&) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  Record(machine, "about", title, text);
  return true;
}

std::optional<std::string> AskFolder(QmWindow, const std::string& start,
                                     const std::string& prompt) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  Record(machine, "folder", prompt, start);
  std::optional<std::string> folder = NextAnswer(machine.answers.folders);
  return folder ? std::optional(WithoutTrailingBackslash(*folder)) : std::nullopt;
}

std::optional<std::string> AskSaveFile(const SaveQuestion& question) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  Record(machine, "save", question.title, question.initialPath + "\n" + question.filter);
  std::optional<std::string> path = NextAnswer(machine.answers.saveFiles);
  bool bare = path && FileNameOf(*path).find('.') == std::string::npos;
  if (bare && !question.defaultExtension.empty()) *path += "." + question.defaultExtension;
  return path;
}

std::optional<UserPartAnswer> AskUserPart(QmModule, QmWindow, const DialogTranslation&) {
  Machine::State& machine = Machine::Current().Internals();
  std::lock_guard guard(machine.mutex);
  Record(machine, "userpart", {}, {});
  return NextAnswer(machine.answers.userParts);
}

}  // namespace quillmar::platform
