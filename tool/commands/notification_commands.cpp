#include "tool/commands/notification_commands.h"

#include <cstdio>
#include <memory>

#include "tool/commands/live_output.h"
#include "tool/device/host_connection.h"

namespace tool {
namespace {

void watchNotifications(const DeviceFolder& device) {
  auto host = HostConnection::require(device);
  host->watch([](const std::string& name) { printEvent(std::chrono::system_clock::now(), name); });
  followHost(*host);
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
