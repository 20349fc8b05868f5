// The command `run`, which starts a device's home screen and waits for its end.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addRunCommand(CLI::App& lumora, Context& context);

}  // namespace tool
