// The command `set`, which chooses a GIF for a location.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addSetCommand(CLI::App& lumora, Context& context);

}  // namespace tool
