// The command `frames`, which writes the frames of a GIF without a home screen.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addFramesCommand(CLI::App& lumora, Context& context);

}  // namespace tool
