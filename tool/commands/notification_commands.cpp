#include "tool/commands/notification_commands.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <memory>

#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/linux/files/signal_descriptor.h"
#include "tool/device/host_connection.h"
#include "tool/support/failure.h"
#include "tool/support/terminal.h"

namespace tool {
namespace {

// Returns the local time in milliseconds: "09:41:00.123".
std::string timeOfDay() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::tm local{};
  localtime_r(&now.tv_sec, &local);
  char text[64];
  std::strftime(text, sizeof text, "%H:%M:%S", &local);
  constexpr long nanosecondsPerMillisecond = 1'000'000;
  char time[80];
  std::snprintf(time, sizeof time, "%s.%03ld", text, now.tv_nsec / nanosecondsPerMillisecond);
  return time;
}

void watchNotifications(const DeviceFolder& device) {
  auto host = HostConnection::require(device);
  host->watch([](const std::string& name) {
    std::printf("%s %s\n", timeOfDay().c_str(), printable(name, STDOUT_FILENO).c_str());
    std::fflush(stdout);
  });
  const auto ends = platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP});
  signalfd_siginfo info{};
  while (host->pump(std::chrono::steady_clock::time_point::max(), ends.get())) {
    if (read(ends.get(), &info, sizeof info) > 0) return;
  }
  throw Failure("the home screen has ended");
}

}  // namespace

void addNotificationCommands(CLI::App& lumora, Context& context) {
  auto name = std::make_shared<std::string>();
  auto* post = addCommand(lumora, context, "post", "post a Darwin notification", [&context, name] {
    HostConnection::require(context.device())->post(*name);
  });
  post->add_option("NAME", *name, "name, such as com.brightfen.lumora.updateAnimating")->required();
  addCommand(lumora, context, "watch", "print each notification as it is posted",
             [&context] { watchNotifications(context.device()); });
  addCommand(lumora, context, "bus", "print the address of the home screen's message bus",
             [&context] {
               const DeviceFolder device = context.device();
               HostConnection::require(device);
               std::printf("%s\n", device.busAddress().value_or("").c_str());
             });
}

}  // namespace tool
