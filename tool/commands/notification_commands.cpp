#include "tool/commands/notification_commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <fnmatch.h>

#include "command_line/event_line.h"
#include "command_line/json_text.h"
#include "tool/commands/live_output.h"
#include "tool/device/host_connection.h"

namespace tool {

using command_line::dumped;
using command_line::printEvent;
using command_line::timestamp;

namespace {

struct WatchOptions {
  // Those of file names. Without any, all names are printed.
  std::vector<std::string> patterns;
  std::vector<std::string> exceptions;
  bool asJson = false;
};

bool fitsAny(const std::vector<std::string>& patterns, const std::string& name) {
  return std::ranges::any_of(patterns, [&name](const std::string& pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
  });
}

bool isWanted(const WatchOptions& options, const std::string& name) {
  return (options.patterns.empty() || fitsAny(options.patterns, name)) &&
         !fitsAny(options.exceptions, name);
}

void printNotification(const WatchOptions& options, const std::string& name) {
  const auto now = std::chrono::system_clock::now();
  if (!options.asJson) {
    printEvent(now, name);
    return;
  }
  std::printf("%s\n", dumped({{"time", timestamp(now)}, {"name", name}}).c_str());
  std::fflush(stdout);
}

void watchNotifications(const DeviceFolder& device, const WatchOptions& options) {
  auto host = HostConnection::require(device);
  host->watch([&options](const std::string& name) {
    if (isWanted(options, name)) printNotification(options, name);
  });
  followHost(*host);
}

}  // namespace

void addNotificationCommands(CLI::App& lumora, Context& context) {
  auto name = std::make_shared<std::string>();
  auto* post = addCommand(lumora, context, "post", "post a Darwin notification", [&context, name] {
    HostConnection::require(context.device())->post(*name);
  });
  post->add_option("NAME", *name, "name, such as com.brightfen.lumora.updateAnimating")->required();
  auto options = std::make_shared<WatchOptions>();
  auto* watch = addCommand(lumora, context, "watch", "print each notification as it is posted",
                           [&context, options] { watchNotifications(context.device(), *options); });
  watch->add_option("PATTERN", options->patterns,
                    "only names that fit it, such as 'com.brightfen.*'; several can be given");
  watch->add_option("--except", options->exceptions, "no names that fit it; may be given again")
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  watch->add_flag("--json", options->asJson, "print one JSON object per line");
  addCommand(lumora, context, "bus", "print the address of the home screen's message bus",
             [&context] {
               const DeviceFolder device = context.device();
               HostConnection::require(device);
               std::printf("%s\n", device.busAddress().value_or("").c_str());
             });
}

}  // namespace tool
