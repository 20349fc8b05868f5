// The commands `post`, `watch` and `bus`, for the notifications on the device's bus.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addNotificationCommands(CLI::App& lumora, Context& context);

}  // namespace tool
