// Signals as something to read: a process that waits for descriptors hears of them there.
#pragma once

#include <initializer_list>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Blocks these signals in the calling thread, and in those it starts from now on. Returns a
// descriptor that can be read (signalfd_siginfo) when one has come. What whoever started the
// process wants ignored stays ignored, SIGCHLD aside. To be called before any thread is started.
FileDescriptor signalDescriptor(std::initializer_list<int> signals);

}  // namespace platform::backend
