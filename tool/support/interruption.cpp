#include "tool/support/interruption.h"

#include <algorithm>
#include <csignal>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/linux/files/signal_descriptor.h"

namespace tool {

Interruption::Interruption()
    : signals_(platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP})) {}

Interruption::~Interruption() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&set, signal);
  pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

bool Interruption::comesUntil(std::chrono::steady_clock::time_point end) {
  using namespace std::chrono;
  const auto rest = std::max(nanoseconds(end - steady_clock::now()), nanoseconds(0));
  const auto whole = floor<seconds>(rest);
  const timespec timeout{whole.count(), (rest - whole).count()};
  pollfd descriptor{signals_.get(), POLLIN, 0};
  if (ppoll(&descriptor, 1, &timeout, nullptr) <= 0) return false;
  signalfd_siginfo info{};
  return read(signals_.get(), &info, sizeof info) > 0;
}

}  // namespace tool
