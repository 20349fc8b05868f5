#include "tool/commands/live_output.h"

#include <chrono>
#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/signal_descriptor.h"

namespace tool {

using command_line::Failure;

void followHost(HostConnection& host) {
  const auto ends = platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP});
  signalfd_siginfo info{};
  while (host.pump(std::chrono::steady_clock::time_point::max(), ends.get())) {
    if (read(ends.get(), &info, sizeof info) > 0) return;
  }
  throw Failure("the home screen has ended");
}

}  // namespace tool
