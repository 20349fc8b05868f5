// The commands `mode`, `dock`, `speed`, `alpha` and `scaling`: settings that take effect at once.
#pragma once

#include <vector>

#include "command_line/command.h"
#include "preferences/commands/device_actions.h"

namespace preferences {

// Returns those that change one location.
std::vector<CLI::App*> addLiveSettingsCommands(CLI::App& lumora, command_line::Context& context,
                                               const DeviceActions& device);

}  // namespace preferences
