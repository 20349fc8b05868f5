// The settings file on the command line.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/commands/command.h"

namespace tool {

void addSettingsCommands(CLI::App& lumora, Context& context);

}  // namespace tool
