// A whole session: log in, carry out the steps of a job, log out. Everything happens through the
// module's exports, as in a real CAD.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "session/Addin.h"
#include "session/Job.h"
#include "session/Model.h"
#include "session/Orders.h"
#include "session/Timeline.h"

namespace session {

struct SessionSetup {
  std::string drive;                  // root of the machine's drive, without trailing backslash
  std::chrono::seconds patience{30};  // for what the host and the module have to do
};

class Session {
 public:
  // `tell` is called with a line for the user whenever a step is done.
  Session(const Job& job, const SessionSetup& setup, std::function<void(const std::string&)> tell);

  // Throws a SessionError that says which step failed and why.
  void Run();

  const Timeline& Calls() const { return timeline; }
  // The document as the session left it; an empty text when there was none yet.
  const std::string& DocumentText() const { return documentText; }

 private:
  void RunSteps();
  // After a failure: whatever can still be had of the document.
  void KeepDocument();
  void BeginDocument();
  void LogIn();
  void LogOut();

  void Perform(const Calculation& calculation);
  void Perform(const Change& change);
  void Perform(const Settings& settings);
  void Perform(const NewLogin& step);

  // Lets the user select the first part of a calculation; an empty name selects nothing.
  void Select(const std::string& calculationName);

  // Waits, while messages are dispatched, until the host has answered; throws when it refuses.
  std::vector<std::string> AwaitAnswer(const std::string& what, const std::string& order);
  // Waits until `done` says so of the document.
  void AwaitDocument(const std::string& what, const std::string& expected,
                     const std::function<bool(const DocumentJson&)>& done);
  // False when the patience was over, or when `hopeless` said so after a while.
  bool PumpUntil(const std::function<bool()>& done, const std::function<bool()>& hopeless);
  DocumentJson Document();
  // `what`, followed by what the CAD had to say about it.
  [[noreturn]] void Fail(const std::string& what);
  void Require(int result, const std::string& what);

  const Job& job;
  SessionSetup setup;
  std::function<void(const std::string&)> tell;
  Timeline timeline;  // before the libraries: they look for the trace when they are loaded
  Orders orders;
  Cad cad;
  std::optional<Module> module;
  struct Started {
    std::string calculation;           // data-file type
    std::vector<std::string> objects;  // names in the CAD's document, UTF-8
  };
  std::map<std::string, Started> started;  // by the names of the job
  std::string documentText;
};

}  // namespace session
