#include "tool/commands/screen_commands.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <memory>
#include <thread>

#include <sys/file.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "host/control/control_names.h"
#include "platform/linux/files/signal_descriptor.h"
#include "settings/notification_names.h"
#include "tool/device/file_lock.h"
#include "tool/support/failure.h"
#include "tool/support/terminal.h"
#include "tool/support/user_file.h"

namespace tool {
namespace {

using std::chrono::steady_clock;
namespace method = host::control::method;

struct Words {
  std::string word;
  std::string path;
  double seconds = 0;
  double timeout = usualTimeout.count();
};

void awaitHost(const DeviceFolder& device, Seconds timeout) {
  constexpr std::chrono::milliseconds pause{20};
  const TimeLimit limit(timeout);
  while (!HostConnection::find(device, limit.left())) {
    if (limit.isOver()) HostConnection::require(device, limit.left());
    std::this_thread::sleep_for(pause);
  }
}

void stopHost(const DeviceFolder& device, Seconds timeout) {
  const TimeLimit limit(timeout);
  HostConnection::require(device, limit.left())->call(method::stop, limit.left());
  FileLock lock(device, FileLock::host);
  if (!lock.take(limit.left())) {
    throw Failure("the home screen is still running after the timeout");
  }
}

void takeScreenshot(const DeviceFolder& device, const std::string& path) {
  checkUserFileIsWritable(path);
  writeUserFile(path, HostConnection::require(device)->screenshot());
}

void advance(const DeviceFolder& device, Seconds span, Seconds timeout) {
  HostConnection::require(device)->advance(std::chrono::round<std::chrono::nanoseconds>(span),
                                           timeout);
}

void removeWallpaper(const DeviceFolder& device, const std::string& location) {
  auto host = HostConnection::require(device);
  const FileLock lock = lockOutImports(device);
  host->post(location == "all" ? lumora::control::removeGIFFromAllWallpapers
                               : locationNamed(location).removalNotification);
  host->settle();
}

// Local time to the millisecond: "09:41:00.123".
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
  while (host->pump(steady_clock::time_point::max(), ends.get())) {
    if (read(ends.get(), &info, sizeof info) > 0) return;
  }
  throw Failure("the home screen has ended");
}

void addStateCommands(CLI::App& lumora, Context& context) {
  auto call = [&context](const char* method) {
    return [&context, method] { HostConnection::require(context.device())->call(method); };
  };
  addCommand(lumora, context, "lock", "go to the lock screen", call(method::lock));
  addCommand(lumora, context, "unlock", "leave the lock screen", call(method::home));
  addCommand(lumora, context, "home", "go to the home screen", call(method::home));

  auto words = std::make_shared<Words>();
  auto* app = addCommand(lumora, context, "app", "open or close an app", [&context, words] {
    HostConnection::require(context.device())
        ->call(words->word == "open" ? method::openApp : method::closeApp);
  });
  addChoice(app, "ACTION", words->word, {"open", "close"});
  auto* screen =
      addCommand(lumora, context, "screen", "switch the display on or off", [&context, words] {
        HostConnection::require(context.device())
            ->call(words->word == "on" ? method::displayOn : method::displayOff);
      });
  addChoice(screen, "STATE", words->word, {"on", "off"});
  auto* rotate = addCommand(lumora, context, "rotate", "turn the device", [&context, words] {
    HostConnection::require(context.device())->rotate(words->word);
  });
  addChoice(rotate, "ORIENTATION", words->word, {"portrait", "left", "right", "upside-down"});
}

void addWaitingCommands(CLI::App& lumora, Context& context) {
  auto words = std::make_shared<Words>();
  auto* wait =
      addCommand(lumora, context, "wait", "return once the home screen has launched",
                 [&context, words] { awaitHost(context.device(), Seconds(words->timeout)); });
  addTimeout(wait, words->timeout);
  auto* stop = addCommand(lumora, context, "stop", "end the home screen", [&context, words] {
    stopHost(context.device(), Seconds(words->timeout));
  });
  addTimeout(stop, words->timeout);
  auto* move = addCommand(lumora, context, "advance", "advance a manual clock", [&context, words] {
    advance(context.device(), Seconds(words->seconds), Seconds(words->timeout));
  });
  constexpr long maxAdvance = 1'000'000;
  move->add_option("SECONDS", words->seconds)->required()->check(numberUpTo(maxAdvance));
  addTimeout(move, words->timeout);
}

void addWallpaperCommands(CLI::App& lumora, Context& context) {
  auto words = std::make_shared<Words>();
  auto* remove = addCommand(lumora, context, "remove", "take a wallpaper down",
                            [&context, words] { removeWallpaper(context.device(), words->word); });
  addChoice(remove, "LOCATION", words->word, {"shared", "lockscreen", "homescreen", "all"});
  auto* shot = addCommand(lumora, context, "screenshot", "save what the screen shows now",
                          [&context, words] { takeScreenshot(context.device(), words->path); });
  shot->add_option("FILE.png", words->path)->required();
}

}  // namespace

void addScreenCommands(CLI::App& lumora, Context& context) {
  addWallpaperCommands(lumora, context);
  addStateCommands(lumora, context);
  addWaitingCommands(lumora, context);
}

void addNotificationCommands(CLI::App& lumora, Context& context) {
  auto name = std::make_shared<std::string>();
  auto* post = addCommand(lumora, context, "post", "post one notification", [&context, name] {
    HostConnection::require(context.device())->post(*name);
  });
  post->add_option("NAME", *name)->required();
  addCommand(lumora, context, "watch", "print each notification as it passes",
             [&context] { watchNotifications(context.device()); });
  addCommand(lumora, context, "bus", "print the address of the device's bus", [&context] {
    const DeviceFolder device = context.device();
    HostConnection::require(device);
    std::printf("%s\n", device.busAddress().value_or("").c_str());
  });
}

}  // namespace tool
