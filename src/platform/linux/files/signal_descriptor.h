// Delivers signals through a file descriptor.
#pragma once

#include <initializer_list>

#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Blocks these signals in the calling thread and in those that it starts later. Returns a
// descriptor from which a signalfd_siginfo can be read when one has arrived, or none if that fails.
// Signals that were ignored when the process started stay ignored, except SIGCHLD. Call it before
// any thread is started.
FileDescriptor signalDescriptor(std::initializer_list<int> signals);

}  // namespace platform::backend
