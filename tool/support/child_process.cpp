#include "tool/support/child_process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command_line/failure.h"

namespace tool {

using command_line::Failure;

namespace {

// Prepares the new process to end with its parent, and resets its signals.
void endWithParent(pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  // The parent may have died before the line above.
  if (getppid() != parent) _exit(EXIT_FAILURE);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  setpgid(0, 0);
}

[[noreturn]] void becomeProgram(char* const* arguments, int errorFile) {
  if (errorFile >= 0) dup2(errorFile, STDERR_FILENO);
  execvp(arguments[0], arguments);
  _exit(exitCodeOfMissingProgram);
}

bool hasEnded(pid_t process) {
  return waitpid(process, nullptr, WNOHANG) != 0;
}

}  // namespace

pid_t startProgram(const std::vector<std::string>& arguments, int errorFile) {
  std::vector<char*> pointers(arguments.size() + 1, nullptr);
  std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                 [](const std::string& argument) { return const_cast<char*>(argument.c_str()); });
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throw Failure("cannot start " + arguments.front() + ": " + std::strerror(errno));
  if (child == 0) {
    endWithParent(parent);
    becomeProgram(pointers.data(), errorFile);
  }
  return child;
}

pid_t startProcess(const std::function<int()>& work) {
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  if (child == 0) {
    endWithParent(parent);
    _exit(work());
  }
  return child;
}

void endProgram(pid_t process) {
  constexpr std::chrono::milliseconds pause{10};
  constexpr int patience = 500;
  kill(process, SIGTERM);
  for (int count = 0; count < patience; ++count) {
    if (hasEnded(process)) return;
    std::this_thread::sleep_for(pause);
  }
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

}  // namespace tool
