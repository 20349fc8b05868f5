// Starting a device's home screen.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addRunCommand(CLI::App& lumora, Context& context);

}  // namespace tool
