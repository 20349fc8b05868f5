// The commands `post` and `watch`.
#pragma once

#include "command_line/command.h"

namespace phone {

void addNotificationCommands(CLI::App& lumora, command_line::Context& context);

}  // namespace phone
