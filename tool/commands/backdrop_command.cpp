#include "tool/commands/backdrop_command.h"

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "host/control/status_keys.h"
#include "host/options/host_options.h"
#include "tool/device/host_connection.h"
#include "tool/device/last_desktop.h"
#include "tool/support/gif_file.h"

namespace tool {
namespace {

// Returns true if the next `lumora run` shall find it.
bool isKept(HostConnection& host) {
  const auto report = nlohmann::json::parse(host.status());
  return report.at(host::status::display) == host::status::displayDesktop;
}

// Includes the outputs that have a wallpaper of their own. That of a simulated phone lasts as long
// as the phone runs.
void changeBackdrop(const DeviceFolder& device, const host::BackdropOptions& backdrop) {
  if (!backdrop.file.empty()) readGif(backdrop.file);
  if (const auto host = HostConnection::find(device)) {
    host->setBackdrop(backdrop);
    if (!isKept(*host)) return;
  }
  for (const std::string& output : outputsWithOwnWallpaper(device)) {
    const auto host = HostConnection::find(DeviceFolder(folderOfOutput(device, output)));
    if (host) host->setBackdrop(backdrop);
  }
  // The device that was named last is the root of all device paths.
  const DeviceFolder desktop(device.path());
  host::HostOptions options = lastDesktop(desktop);
  options.desktop.backdrop = backdrop;
  storeLastDesktop(desktop, options);
}

}  // namespace

void addBackdropCommand(CLI::App& lumora, Context& context) {
  auto backdrop = std::make_shared<std::string>();
  auto* command = addCommand(
      lumora, context, "backdrop", "choose what is shown beside the GIF", [&context, backdrop] {
        changeBackdrop(context.madeDevice(), *host::parsedBackdrop(*backdrop));
      });
  command->add_option("BACKDROP", *backdrop, host::backdropHelp)
      ->required()
      ->type_name(host::backdropValues)
      ->check([](const std::string& text) {
        return host::parsedBackdrop(text) ? std::string() : std::string(host::backdropProblem);
      });
}

}  // namespace tool
