// The commands `mode`, `dock`, `speed`, `alpha` and `scaling`: settings that take effect at once.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addLiveSettingsCommands(CLI::App& lumora, Context& context);

}  // namespace tool
