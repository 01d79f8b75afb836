#include "companions/ChildProcess.h"

#include <signal.h>
#include <stdio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace quillmar::test {

struct ChildProcess::Backend {
  pid_t process = -1;
  FILE* input = nullptr;
  FILE* output = nullptr;

  void End() {
    if (input != nullptr) fclose(input);
    input = nullptr;
    if (process > 0) waitpid(process, nullptr, 0);
    process = -1;
    if (output != nullptr) fclose(output);
    output = nullptr;
  }
};

ChildProcess::ChildProcess(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments)
    : backend(std::make_unique<Backend>()) {
  int toChild[2];
  int fromChild[2];
  if (pipe(toChild) != 0 || pipe(fromChild) != 0) throw std::runtime_error("no pipe");
  std::vector<char*> words{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) {
    words.push_back(const_cast<char*>(argument.c_str()));
  }
  words.push_back(nullptr);
  backend->process = fork();
  if (backend->process < 0) throw std::runtime_error("no process");
  if (backend->process == 0) {
    dup2(toChild[0], 0);
    dup2(fromChild[1], 1);
    for (const int end : {toChild[0], toChild[1], fromChild[0], fromChild[1]}) close(end);
    execv(program.c_str(), words.data());
    _exit(127);
  }
  close(toChild[0]);
  close(fromChild[1]);
  backend->input = fdopen(toChild[1], "w");
  backend->output = fdopen(fromChild[0], "r");
}

ChildProcess::~ChildProcess() { backend->End(); }

void ChildProcess::Tell(const std::string& line) {
  fputs((line + "\n").c_str(), backend->input);
  fflush(backend->input);
}

std::string ChildProcess::Answer() {
  std::string answer;
  for (int character; (character = fgetc(backend->output)) != EOF && character != '\n';) {
    answer += static_cast<char>(character);
  }
  return answer;
}

void ChildProcess::Kill() {
  kill(backend->process, SIGKILL);
  backend->End();
}

}  // namespace quillmar::test
