// The commands `get`, `put`, `settings`, `enable` and `disable`, for the settings file.
#pragma once

#include "command_line/command.h"
#include "preferences/commands/device_actions.h"

namespace preferences {

// Returns `settings`.
CLI::App* addSettingsCommands(CLI::App& lumora, command_line::Context& context,
                              const DeviceActions& device);

}  // namespace preferences
