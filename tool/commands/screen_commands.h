// Commands for what a user does with the screen: lock it, open apps, turn the device, save it.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addScreenCommands(CLI::App& lumora, Context& context);

}  // namespace tool
