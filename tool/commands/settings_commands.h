// The commands `get`, `put`, `settings`, `enable`, `disable` and `dock`, for the settings file.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/commands/command.h"

namespace tool {

void addSettingsCommands(CLI::App& lumora, Context& context);

}  // namespace tool
