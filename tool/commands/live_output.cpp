#include "tool/commands/live_output.h"

#include <csignal>
#include <cstdio>
#include <ctime>

#include <sys/signalfd.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "command_line/terminal.h"
#include "platform/linux/files/signal_descriptor.h"

namespace tool {

using command_line::Failure;
using command_line::printable;

namespace {

using std::chrono::system_clock;

std::string withMilliseconds(const char* format, const std::tm& fields,
                             system_clock::time_point time) {
  char text[64];
  std::strftime(text, sizeof text, format, &fields);
  const auto rest = time - std::chrono::floor<std::chrono::seconds>(time);
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(rest).count();
  char whole[80];
  std::snprintf(whole, sizeof whole, "%s.%03d", text, static_cast<int>(milliseconds));
  return whole;
}

}  // namespace

std::string timeOfDay(system_clock::time_point time) {
  const std::time_t seconds = system_clock::to_time_t(time);
  std::tm local{};
  localtime_r(&seconds, &local);
  return withMilliseconds("%H:%M:%S", local, time);
}

std::string timestamp(system_clock::time_point time) {
  const std::time_t seconds = system_clock::to_time_t(time);
  std::tm universal{};
  gmtime_r(&seconds, &universal);
  return withMilliseconds("%Y-%m-%dT%H:%M:%S", universal, time) + "Z";
}

void printEvent(system_clock::time_point time, const std::string& text) {
  std::printf("%s %s\n", timeOfDay(time).c_str(), printable(text, STDOUT_FILENO).c_str());
  std::fflush(stdout);
}

void followHost(HostConnection& host) {
  const auto ends = platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP});
  signalfd_siginfo info{};
  while (host.pump(std::chrono::steady_clock::time_point::max(), ends.get())) {
    if (read(ends.get(), &info, sizeof info) > 0) return;
  }
  throw Failure("the home screen has ended");
}

}  // namespace tool
