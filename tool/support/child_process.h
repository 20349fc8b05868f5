// Programs started by this one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tool {

// Starts a program, found on the PATH unless its name has a slash, apart from the terminal's
// signals; it is ended with SIGTERM when this process dies. Descriptors at or above 3 that are not
// close-on-exec go with it. What it says on stderr goes to the file, unless that is -1. Throws
// Failure if it cannot be started at all; a program that is not there ends with exit code 127.
pid_t startProgram(const std::vector<std::string>& arguments, int errorFile = -1);

// Does work in a process of its own, which is ended in the same way; the exit code is that of the
// work. Throws Failure if there can be none.
pid_t startProcess(const std::function<int()>& work);

// Ends a program that startProgram has started, gently first, and waits for its end.
void endProgram(pid_t process);

constexpr int exitCodeOfMissingProgram = 127;

}  // namespace tool
