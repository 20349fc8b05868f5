// Looking at and posting on the bus of the device.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addNotificationCommands(CLI::App& lumora, Context& context);

}  // namespace tool
