// A whole session: log in, carry out the steps of a job, log out. Everything happens through the
// module's exports, as in a real CAD.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "session/Addin.h"
#include "session/Job.h"
#include "session/Model.h"
#include "session/Orders.h"
#include "session/SessionData.h"
#include "session/Timeline.h"

namespace session {

struct SessionSetup {
  std::string drive;                  // root of the machine's drive, without trailing backslash
  std::chrono::seconds patience{30};  // for what the host and the module have to do
  bool continued = false;             // on the document of that name that the machine has
};

// What the session tells while it runs. Any of them may be empty.
struct SessionWatcher {
  std::function<void(const std::string& line)> tell;  // something was done
  // A step is under way, of so many; called again while it is waited for.
  std::function<void(std::size_t step, std::size_t count, const std::string& title)> progress;
  std::function<bool()> interrupted;  // the user wants the session to end
};

class Session {
 public:
  Session(const Job& job, const SessionSetup& setup, SessionWatcher watcher);

  // Throws a SessionError that says which step failed and why, a SessionInterrupted when the user
  // ended it.
  void Run();

  const Timeline& Calls() const { return timeline; }
  // What was done so far and, when Run has ended in whichever way, the document.
  SessionData Data() const;

 private:
  using Names = std::vector<std::string>;

  void RunSteps();
  void RunStep(const Step& step);
  void NoteMessages();
  // After a failure: whatever can still be had of the document.
  void KeepDocument();
  void BeginDocument();
  void SaveDocument();
  static int QM_CDECL OnSaving(void* session, int made, int count, const char* name);
  void LogIn();
  void LogOut();
  // Tells the module which files the CAD takes from the host, and which those are that a step is
  // about: DXF drawings, or models as facets.
  void TakeFiles(int fileType);
  int FilesOf(const Step& step);
  void AwaitHostEnd();

  void Perform(const Calculation& calculation);
  void Perform(const Change& change);
  void Perform(const Settings& settings);
  void Perform(const NewLogin& step);
  void Perform(const Group& group);
  void Perform(const Assembly& assembly);
  void Perform(const Drawing& drawing);
  void Perform(const Picture& picture);
  void Perform(const Format& format);
  void Perform(const OldPart& part);
  void Perform(const UserPart& part);
  void Perform(const LinkRefresh& step);
  void Perform(const BillRefresh& step);
  // An export that works on all that stands in the CAD; lines for the user say what was done.
  void RefreshAll(const char* function, const std::function<int()>& refresh,
                  const std::string& nothing, const std::string& done);
  void Perform(const GroupManager& step);
  void Perform(const Update& update);
  void Perform(const Copy& copy);
  void Perform(const Replace& replace);

  // --- the user's commands on a selected part (PartCommandSteps.cpp) ---

  // The user selects the first part of the step of that name and gives the command, a number of
  // CallUTFunction; what else belongs to its calculation is in the store meanwhile.
  void CommandSelected(const std::string& stepName, int command);

  // --- calculations (CalculationSteps.cpp) ---

  // An order for the host; throws when it cannot be written.
  std::string Order(const std::string& calculation, const std::string& protocolId,
                    const Inputs& inputs);
  // After the host was asked to show it: waits for the answer and for the parts, which become the
  // objects of the step.
  void AwaitParts(const std::string& calculation, const std::string& order);
  // The add-in hands the protocol of an object to the module, which puts it into the store.
  void Obtain(const std::string& objectName);
  // As a user does who opens the calculation behind an object, the first of those: the add-in hands
  // the protocols of all that belongs to it to the module, then lets the host show it, in another
  // standard when one is named.
  void ShowCalculationOf(const Names& objects, const std::string& standard = {});
  // The same with other values, and in another standard when one is named; `objects` must follow.
  // Their calculation has that data-file type.
  void Recalculate(const std::string& calculation, const Names& objects, const Inputs& inputs,
                   const std::string& standard = {});
  // The user chooses another standard in the window of the calculation behind the objects.
  void ChooseStandard(const Names& objects, const std::string& standard);
  // Whether the objects have these values, or this standard, already.
  bool HasInputs(const Names& objects, const Inputs& inputs);
  bool HasStandard(const Names& objects, const std::string& standard);
  std::string OlderReference(const OldPart& part);
  // Puts the part into the document, converted and calculated.
  struct Opened;
  Opened OpenOlderPart(const OldPart& part);
  // What the part's calculation would be given when it is opened once more, and then changed as the
  // job says.
  Inputs InputsOfOlderPart(const OldPart& part);

  // --- drawings (DrawingSteps.cpp) ---
  struct Sheet;
  Sheet MakeDrawing(const std::string& protocolId);
  void PlaceDrawing(Sheet& sheet, const std::string& standing);
  Sheet MakePicture(const std::string& protocolId, const std::string& name, bool isNew);

  // --- programs of the suite (UserPartSteps.cpp, GroupSteps.cpp) ---

  // How often a program of the suite that records its runs has run.
  int RunsOf(const char* program) const;
  // Waits for its next run; throws when the program refused what it was given.
  void AwaitRun(const char* program, int runsBefore);

  // --- the step that is carried out ---

  // A call of the module that must give `expected`, named for the timeline.
  template <typename Operation>
  int Call(const char* function, const std::string& arguments, Operation operation) {
    return timeline.Call(function, arguments, operation);
  }
  void Note(std::string line);
  // What was done, told to the user too.
  void Done(const std::string& line);
  // The objects of the step, under whose name later steps find them.
  void Leave(const std::string& calculation, Names objects, bool made);
  // Those of the names, from an earlier session, that stand in the document; none in a new one.
  Names Standing(const Names& objects);
  // Objects of the document that are not in `before`.
  Names NewObjects(const DocumentJson& before);
  // Waits for one at least.
  Names AwaitNewObjects(const DocumentJson& before, const std::string& expected);
  // Lets the user select an object of the step of that name; an empty name selects nothing.
  void Select(const std::string& stepName);

  // Waits, while messages are dispatched, until the host has answered; throws when it refuses.
  Names AwaitAnswer(const std::string& order);
  // Waits until `done` says so of the document.
  void AwaitDocument(const std::string& expected,
                     const std::function<bool(const DocumentJson&)>& done);
  void AwaitChanges(const DocumentJson& before, const Names& objects);
  // False when the patience was over, or when `hopeless` said so after a while.
  bool PumpUntil(const std::function<bool()>& done, const std::function<bool()>& hopeless);
  DocumentJson Document();
  // The step failed: `what`, followed by what the CAD had to say about it.
  [[noreturn]] void Fail(const std::string& what);
  void Require(int result, const std::string& what);

  const Job& job;
  SessionSetup setup;
  SessionWatcher watcher;
  Timeline timeline;  // before the libraries: they look for the trace when they are loaded
  Orders orders;
  Cad cad;
  std::optional<Module> module;
  int takenFiles = 0;
  struct Started {
    std::string calculation;  // data-file type; empty for what is not calculated
    Names objects;            // names in the CAD's document, UTF-8
  };
  std::map<std::string, Started> started;  // by the names of the job
  std::vector<StepRecord> records;
  std::string documentText;
};

// --- what the files of the steps share ---

// Folder of the CAD's documents on the machine's drive.
inline constexpr const char* kDocuments = "\\Drawboard\\Document";

// For people: names, each in quotation marks.
std::string ListOf(const std::vector<std::string>& names);

}  // namespace session
