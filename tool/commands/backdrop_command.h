// The command `backdrop`, which changes what a desktop shows beside the GIF.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addBackdropCommand(CLI::App& lumora, Context& context);

}  // namespace tool
