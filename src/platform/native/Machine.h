// The machine that the native backend plays: root folder with its drives and registry, clock,
// message queue, answers to dialogs, record of what was shown and traced, automation objects.
//
// One machine is current in a process. It is made from the path of the first module of an image
// that attaches ("<root>/drive_c/..."), or set by a program or test with MachineScope; machines
// are independent of each other.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Automation.h"
#include "platform/Dialogs.h"
#include "quillmar/Conventions.h"

namespace quillmar::platform {

// What the user enters into the fields of a form or a sheet, by their names: an item or a typed
// text, "0" and "1" of a check box, the index of a button, "first=second;" for each row.
using FormAnswer = std::map<std::string, std::string>;

// An answer of the user to the next dialog of a kind. Without an answer a dialog is cancelled.
struct ScriptedAnswers {
  std::deque<std::string> folders;    // AskFolder
  std::deque<std::string> saveFiles;  // AskSaveFile
  std::deque<UserPartAnswer> userParts;
  std::deque<FormAnswer> forms;  // other dialogs and sheets; one that is refused is answered again
};

struct ShownDialog {
  // "message", "folder", "save", "userpart", "progress", "form", "sheet", "about"
  std::string kind;
  std::string title;
  std::string text;
};

// What an in-process automation object offers; registered with a machine under its class.
class AutomationServer {
 public:
  virtual ~AutomationServer() = default;
  virtual AutomationResult Call(int identifier, const AutomationArguments& arguments) = 0;
  virtual std::optional<int> FindMember(const std::string& name) = 0;
};

class Machine {
 public:
  // `root` holds drive_c, drive_d ... and registry/.
  explicit Machine(const std::filesystem::path& root);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  static Machine& Current();

  const std::filesystem::path& Root() const;

  // Host path of a Windows path; parts match existing names without regard to case. Parts that do
  // not exist are appended as written.
  std::filesystem::path HostPath(const std::string& windowsPath) const;
  // Windows path of a host path below the root; empty when it is not below it.
  std::string WindowsPath(const std::filesystem::path& hostPath) const;

  // The clock follows the system until it is set; a set clock moves on by one millisecond with
  // each reading, so a loop that waits for it always ends.
  void SetClock(std::uint32_t milliseconds);
  void SetVolumeSerial(std::uint32_t serial);
  // Folders that stand for the PATH variable, as Windows paths.
  void SetSearchPath(std::vector<std::string> folders);

  ScriptedAnswers& Answers();
  // What was shown and traced so far, oldest first.
  std::vector<ShownDialog>& Shown();
  std::vector<std::string>& DebugLines();

  // The table of active objects, by class identifier. Revoking takes an object out of the table;
  // references to it stay good.
  void RegisterActiveObject(const std::string& classId, std::shared_ptr<AutomationServer> server);
  void RevokeActiveObject(const std::string& classId);
  // The program of the class has ended: its objects are taken out of the table, and every
  // reference to them answers ServerGone from now on, also a call that is just under way.
  void EndServer(const std::string& classId);
  // Makes the objects that the system is asked to create when none is active; may be empty. A
  // class without it is started by the program in its LocalServer32 key, when there is one.
  void SetClassFactory(const std::string& classId,
                       std::function<std::shared_ptr<AutomationServer>()> make);

  // Hidden windows as the user and other programs see them.
  bool IsWindowVisible(QmWindow window) const;
  // Shows or hides a window as somebody else would; false when it does not live.
  bool ShowWindowFromOutside(QmWindow window, bool visible);
  bool IsCommandEnabled(QmWindow window, int command) const;
  // Chooses a command of a visible window as the user does; false when it is disabled.
  bool ChooseCommand(QmWindow window, int command);
  // The window that was brought to the foreground last; 0 when none was.
  QmWindow ForegroundWindow() const;

  struct State;  // the backend's own
  State& Internals();

 private:
  std::unique_ptr<State> state;
};

// Makes a machine the current one for the life of the scope.
class MachineScope {
 public:
  explicit MachineScope(Machine& machine);
  ~MachineScope();
  MachineScope(const MachineScope&) = delete;
  MachineScope& operator=(const MachineScope&) = delete;

 private:
  Machine* before;
};

// Called by the native library entry point and by programs of an image with their own host path:
// makes the image's machine current when none is. The first image counts until all of its modules
// that attached have detached; then the next image that attaches takes its place. True when the
// caller's image is the current one from now on: such a module detaches in the end, programs need
// not.
bool AttachToImage(const std::string& hostPath);
void DetachFromImage();

// Name of the function through which a program that is a shared object is started inside this
// process (StartProgram): int (*)(const char* commandLine), nonzero when it started; it has
// registered its objects and windows when it returns.
inline constexpr const char* kInProcessProgramStart = "QmProgramStart";

}  // namespace quillmar::platform
