#include "platform/Processes.h"

#include <pthread.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <future>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/Messages.h"
#include "platform/native/MachineState.h"

namespace quillmar::platform {
namespace {

// A child process, watched by a thread of its own that also takes its exit status, so that no
// dead child is left behind when nobody waits for it.
class Child {
 public:
  bool Ended() const { return ended; }

  // Wakes the queue's thread when the child ends.
  void Wake(const std::shared_ptr<MessageQueue>& queue) {
    std::lock_guard guard(mutex);
    waiting.push_back(queue);
  }

  void End() {
    ended = true;
    std::lock_guard guard(mutex);
    for (const std::weak_ptr<MessageQueue>& entry : waiting) {
      if (std::shared_ptr<MessageQueue> queue = entry.lock()) queue->Wake();
    }
  }

 private:
  std::atomic<bool> ended{false};
  std::mutex mutex;
  std::vector<std::weak_ptr<MessageQueue>> waiting;
};

struct SpawnOrder {
  std::filesystem::path program;
  std::filesystem::path folder;  // empty: the caller's
  std::vector<std::string> arguments;
  sigset_t signals;  // the caller's mask
};

// Process identifier, 0 on failure.
pid_t Spawn(const SpawnOrder& order) {
  std::vector<char*> arguments;
  for (const std::string& argument : order.arguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&actions);
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
  posix_spawnattr_setsigmask(&attributes, &order.signals);
  int error = 0;
  if (!order.folder.empty()) {
    error = posix_spawn_file_actions_addchdir_np(&actions, order.folder.c_str());
  }
  pid_t child = 0;
  if (error == 0) {
    error = posix_spawn(&child, order.program.c_str(), &actions, &attributes, arguments.data(),
                        environ);
  }
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? child : 0;
}

void Watch(const SpawnOrder& order, std::promise<bool> started,
           const std::shared_ptr<Child>& child) {
  pid_t process = Spawn(order);
  started.set_value(process != 0);
  if (process == 0) return;
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
  child->End();
}

// Signals are the host's business: the watching thread takes none.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

  const sigset_t& Before() const { return before; }

 private:
  sigset_t before{};
};

std::shared_ptr<Child> StartChild(SpawnOrder order) {
  auto child = std::make_shared<Child>();
  std::promise<bool> started;
  std::future<bool> outcome = started.get_future();
  try {
    BlockedSignals blocked;
    order.signals = blocked.Before();
    std::thread(Watch, std::move(order), std::move(started), child).detach();
  } catch (const std::system_error&) {
    return nullptr;
  }
  return outcome.get() ? child : nullptr;
}

}  // namespace

// A program in this process has no child of its own: it was idle when it had started, and nobody
// can wait for its end.
struct Process::Backend {
  std::shared_ptr<Child> child;
};

Process::Process(std::unique_ptr<Backend> started) : backend(std::move(started)) {}
Process::Process(Process&&) noexcept = default;
Process& Process::operator=(Process&&) noexcept = default;
Process::~Process() = default;

// Programs of the host give no sign of waiting for input; each plays a program with a window, which
// has it as soon as it runs.
bool Process::WaitUntilIdle() { return true; }

void Process::WaitUntilEndedPumpingMessages() {
  const std::shared_ptr<Child>& child = backend->child;
  if (child == nullptr) return;
  std::shared_ptr<MessageQueue> queue = Machine::Current().Internals().windows->QueueOfThread();
  child->Wake(queue);
  while (!child->Ended()) {
    queue->WaitForInput([&] { return child->Ended(); });
    if (!child->Ended()) PumpMessages();
  }
}

std::optional<Process> StartProgram(const ProgramStart& start) {
  Machine::State& machine = Machine::Current().Internals();
  SpawnOrder order;
  order.program = machine.paths.ToHost(start.program);
  std::error_code error;
  if (start.program.empty() || !std::filesystem::is_regular_file(order.program, error)) {
    return std::nullopt;
  }
  const std::string& line = start.commandLine.empty() ? start.program : start.commandLine;
  auto backend = std::make_unique<Process::Backend>();
  if (IsSharedObject(order.program)) {
    if (!machine.programs.Start(order.program, line)) return std::nullopt;
    return Process(std::move(backend));
  }
  order.arguments = start.commandLine.empty() ? std::vector{line} : SplitCommandLine(line);
  if (!start.folder.empty()) order.folder = machine.paths.ToHost(start.folder);
  backend->child = StartChild(std::move(order));
  if (backend->child == nullptr) return std::nullopt;
  return Process(std::move(backend));
}

}  // namespace quillmar::platform
