// What a run of the conversion has done so far, on the disk: the folder "<parent>\<number>" with
// the file "journal.txt" and a reference text for each protocol as it was before.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tools {

class Journal {
 public:
  // Takes up the newest run below `parent` when it is unfinished, else begins a new one. `title`
  // tells runs of different purpose apart: an unfinished run of another title is a ToolError.
  // `ids` are the protocols of the store.
  Journal(const std::string& parent, const std::string& title, const std::vector<std::string>& ids);

  bool IsResumed() const { return resumed; }
  const std::string& Folder() const { return folder; }

  // Done in this run, or made by it: not to be converted (again).
  bool IsDone(const std::string& id) const { return done.contains(id); }
  // Begun by an interrupted run and not done.
  bool IsBegun(const std::string& id) const { return begun.contains(id); }
  bool IsAnyBegun() const { return !begun.empty(); }
  // Not in the store when the run began, and not made by a conversion that is done.
  bool IsUnknown(const std::string& id) const { return !known.contains(id) && !done.contains(id); }

  // Each is on the disk when it returns; a ToolError when it cannot be written.
  void Begin(const std::string& id);
  void Done(const std::string& id, const std::vector<std::string>& copies);
  void Finish();

 private:
  void Read(const std::string& text, const std::string& title);
  void Add(const std::string& line);

  std::string folder;
  bool resumed = false;
  std::set<std::string> known, begun, done;
};

}  // namespace tools
