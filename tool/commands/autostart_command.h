// The command autostart.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addAutostartCommand(CLI::App& lumora, Context& context);

}  // namespace tool
