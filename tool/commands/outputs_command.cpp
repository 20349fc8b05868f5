#include "tool/commands/outputs_command.h"

#include <cstdio>
#include <memory>

#include <nlohmann/json.hpp>

#include "host/control/status_keys.h"
#include "tool/device/host_connection.h"
#include "tool/device/output_text.h"

namespace tool {
namespace {

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

}  // namespace

void addOutputsCommand(CLI::App& lumora, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "outputs", "list the outputs of a desktop",
                             [&context, asJson] { listOutputs(context.device(), *asJson); });
  command->add_flag("--json", *asJson, "print a JSON array");
}

}  // namespace tool
