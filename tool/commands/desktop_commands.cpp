#include "tool/commands/desktop_commands.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/control/control_names.h"
#include "host/control/status_keys.h"
#include "tool/device/host_connection.h"
#include "tool/device/output_report.h"

namespace tool {
namespace {

namespace method = host::service::method;

void listOutputs(const DeviceFolder& device, bool asJson) {
  const auto report = nlohmann::ordered_json::parse(HostConnection::require(device)->status());
  const auto outputs = outputsOf(report, device);
  if (asJson) {
    std::printf("%s\n", outputs.dump(2).c_str());
    return;
  }
  const bool isDesktop = report.value(host::status::display, "") == host::status::displayDesktop;
  if (outputs.empty()) {
    std::printf(isDesktop ? "no outputs at the moment\n"
                          : "no outputs: the home screen is not on a desktop\n");
  }
  for (const auto& output : outputs) std::printf("%s\n", textOfOutput(output).c_str());
}

// Without --output, includes the outputs that have a wallpaper of their own.
void call(const Context& context, const char* method) {
  const DeviceFolder device = context.device();
  HostConnection::require(device)->call(method);
  if (!context.output.empty()) return;
  for (const std::string& output : outputsWithOwnWallpaper(device)) {
    const auto host = HostConnection::find(DeviceFolder(folderOfOutput(device, output)));
    if (host) host->call(method);
  }
}

void toggle(const Context& context) {
  const auto report = nlohmann::json::parse(HostConnection::require(context.device())->status());
  const bool isPaused = report.value(host::status::paused, false);
  call(context, isPaused ? method::resume : method::pause);
  std::printf(isPaused ? "playing\n" : "paused\n");
}

}  // namespace

void addDesktopCommands(CLI::App& lumora, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "outputs", "list the outputs of a desktop",
                             [&context, asJson] { listOutputs(context.device(), *asJson); });
  command->add_flag("--json", *asJson, "print a JSON array");
  const auto add = [&](const char* name, const char* description, std::function<void()> perform) {
    addOutput(addCommand(lumora, context, name, description, std::move(perform)), context.output);
  };
  add("pause", "pause the wallpaper of a desktop", [&context] { call(context, method::pause); });
  add("resume", "let the wallpaper of a desktop play again",
      [&context] { call(context, method::resume); });
  add("toggle", "pause or resume the wallpaper of a desktop", [&context] { toggle(context); });
}

}  // namespace tool
