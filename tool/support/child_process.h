// Child processes.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tool {

// Starts a program, found on the PATH unless its name has a slash. It has its own process group, so
// the terminal's signals do not reach it, and gets SIGTERM when this process dies. It inherits
// descriptors that are not close-on-exec. Its stderr goes to the descriptor errorFile, unless that
// is -1. Returns the process, which the caller ends with endProgram or waits for. Throws Failure if
// no process can be made; a missing program ends with exitCodeOfMissingProgram.
pid_t startProgram(const std::vector<std::string>& arguments, int errorFile = -1);

// Runs work in a child process, with signals as above. What work returns is the exit code; it must
// not throw. Returns and throws as above.
pid_t startProcess(const std::function<int()>& work);

// Ends a child with SIGTERM, or with SIGKILL if it is still running after 5 seconds. Returns after
// its end.
void endProgram(pid_t process);

constexpr int exitCodeOfMissingProgram = 127;

}  // namespace tool
