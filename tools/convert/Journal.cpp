#include "convert/Journal.h"

#include <fmt/format.h>

#include "base/Texts.h"
#include "common/Place.h"
#include "common/Program.h"

namespace tools {
namespace {

constexpr const char* kFile = "journal.txt";
constexpr const char* kKnownLine = "known";
constexpr const char* kBeginLine = "begin";
constexpr const char* kDoneLine = "done";
constexpr const char* kEndLine = "end";

std::string FolderOfRun(const std::string& parent, int number) {
  return JoinSystemPath(parent, std::to_string(number));
}

bool IsFinished(const std::string& journal) {
  return journal.ends_with(std::string(kEndLine) + "\n");
}

}  // namespace

// A line is a word and identifiers, separated by tabs; the first line is the title. The lines up to
// the last "known" are written together with the file.
Journal::Journal(const std::string& parent, const std::string& title,
                 const std::vector<std::string>& ids) {
  std::optional<std::string> newest;
  int number = 1;
  while (auto text = ReadSystemFile(JoinSystemPath(FolderOfRun(parent, number), kFile))) {
    newest = std::move(text);
    ++number;
  }
  if (newest && !IsFinished(*newest)) {
    folder = FolderOfRun(parent, number - 1);
    Read(*newest, title);
    resumed = true;
    return;
  }
  folder = FolderOfRun(parent, number);
  std::string text = title + "\n";
  for (const std::string& id : ids) text += fmt::format("{}\t{}\n", kKnownLine, id);
  known.insert(ids.begin(), ids.end());
  const std::string path = JoinSystemPath(folder, kFile);
  if (!WriteSystemFile(path, text)) throw ToolError("Cannot write " + path);
}

void Journal::Read(const std::string& text, const std::string& title) {
  // What stands behind the last line end was cut by the interruption.
  const auto lines = quillmar::SplitTerminated(text, "\n");
  if (lines.empty() || lines.front() != title) {
    throw ToolError(fmt::format(
        "The conversion in {} was interrupted; it must be ended first, with the arguments it was "
        "begun with ({})",
        folder, lines.empty() ? std::string_view("unreadable") : lines.front()));
  }
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const auto words = quillmar::SplitKeepingEmpty(lines[i], '\t');
    if (words.size() < 2) continue;
    if (words[0] == kKnownLine) known.insert(words[1]);
    if (words[0] == kBeginLine) begun.insert(words[1]);
    if (words[0] == kDoneLine) {
      begun.erase(words[1]);
      done.insert(words.begin() + 1, words.end());
    }
  }
}

void Journal::Begin(const std::string& id) {
  Add(fmt::format("{}\t{}\n", kBeginLine, id));
  begun.insert(id);
}

void Journal::Done(const std::string& id, const std::vector<std::string>& copies) {
  std::string line = fmt::format("{}\t{}", kDoneLine, id);
  for (const std::string& copy : copies) line += "\t" + copy;
  Add(line + "\n");
  begun.erase(id);
  done.insert(id);
  done.insert(copies.begin(), copies.end());
}

void Journal::Finish() { Add(std::string(kEndLine) + "\n"); }

void Journal::Add(const std::string& line) {
  const std::string path = JoinSystemPath(folder, kFile);
  if (!AppendSystemFile(path, line)) throw ToolError("Cannot write " + path);
}

}  // namespace tools
