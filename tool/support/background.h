// Continues a command in the background.
#pragma once

#include <functional>

namespace tool {

// Runs work in a child process with a session of its own, which the end of the terminal does not
// reach. What the child and its children print goes to the file log, and what is there when work
// calls ready, or ends before that, is printed by this process, too. Returns in both processes: in
// the parent as soon as work is ready, or with its exit code if it ends before that; in the child
// with what work returns. What work throws is thrown in the child. Throws Failure if no process can
// be made. Requires an empty file, and that this process has no other threads.
int inBackground(int log, const std::function<int(const std::function<void()>& ready)>& work);

}  // namespace tool
