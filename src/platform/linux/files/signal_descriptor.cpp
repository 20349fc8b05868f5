#include "platform/linux/files/signal_descriptor.h"

#include <csignal>

#include <sys/signalfd.h>

namespace platform::backend {
namespace {

bool isIgnored(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == SIG_IGN && signal != SIGCHLD;
}

}  // namespace

FileDescriptor signalDescriptor(std::initializer_list<int> signals) {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : signals) {
    if (!isIgnored(signal)) sigaddset(&set, signal);
  }
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  return FileDescriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
}

}  // namespace platform::backend
