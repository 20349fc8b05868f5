// The commands `get`, `put`, `settings`, `enable` and `disable`, for the settings file.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/commands/command.h"

namespace tool {

void addSettingsCommands(CLI::App& lumora, Context& context);

}  // namespace tool
