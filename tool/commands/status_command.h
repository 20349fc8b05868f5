// The command `status`.
#pragma once

#include <nlohmann/json.hpp>

#include "tool/commands/command.h"
#include "tool/device/host_connection.h"

namespace tool {

// Returns the object that `lumora status --json` prints. host: nullptr if no home screen is
// running. Throws Failure if the home screen does not answer.
nlohmann::ordered_json currentStatus(const DeviceFolder& device, HostConnection* host);

void addStatusCommand(CLI::App& lumora, Context& context);

}  // namespace tool
