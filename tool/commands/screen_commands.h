// The hand on the home screen, and a look at its notifications.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addScreenCommands(CLI::App& lumora, Context& context);
void addNotificationCommands(CLI::App& lumora, Context& context);

}  // namespace tool
