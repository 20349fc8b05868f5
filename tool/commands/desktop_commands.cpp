#include "tool/commands/desktop_commands.h"

#include <cstdio>
#include <memory>

#include <nlohmann/json.hpp>

#include "host/control/control_names.h"
#include "host/control/status_keys.h"
#include "tool/device/host_connection.h"
#include "tool/device/output_text.h"

namespace tool {
namespace {

namespace method = host::service::method;

void listOutputs(const DeviceFolder& device, bool asJson) {
  const auto report = nlohmann::ordered_json::parse(HostConnection::require(device)->status());
  const auto& outputs = report[host::status::outputs];
  if (asJson) {
    std::printf("%s\n", outputs.dump(2).c_str());
    return;
  }
  if (outputs.empty()) std::printf("no outputs: the home screen is not on a desktop\n");
  for (const auto& output : outputs) std::printf("%s\n", textOfOutput(output).c_str());
}

void toggle(const DeviceFolder& device) {
  auto host = HostConnection::require(device);
  const auto report = nlohmann::json::parse(host->status());
  const bool isPaused = report.value(host::status::paused, false);
  host->call(isPaused ? method::resume : method::pause);
  std::printf(isPaused ? "playing\n" : "paused\n");
}

}  // namespace

void addDesktopCommands(CLI::App& lumora, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "outputs", "list the outputs of a desktop",
                             [&context, asJson] { listOutputs(context.device(), *asJson); });
  command->add_flag("--json", *asJson, "print a JSON array");
  addCommand(lumora, context, "pause", "pause the wallpaper of a desktop",
             [&context] { HostConnection::require(context.device())->call(method::pause); });
  addCommand(lumora, context, "resume", "let the wallpaper of a desktop play again",
             [&context] { HostConnection::require(context.device())->call(method::resume); });
  addCommand(lumora, context, "toggle", "pause or resume the wallpaper of a desktop",
             [&context] { toggle(context.device()); });
}

}  // namespace tool
