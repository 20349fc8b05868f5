// Commands for a running home screen: its state, its clock, its wallpapers, its notifications.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addScreenCommands(CLI::App& lumora, Context& context);
void addNotificationCommands(CLI::App& lumora, Context& context);

}  // namespace tool
