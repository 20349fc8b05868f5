// The commands `screenshot`, `lock`, `unlock`, `home`, `app`, `screen` and `rotate`.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addScreenCommands(CLI::App& lumora, Context& context);

}  // namespace tool
