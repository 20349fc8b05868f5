// The blur setting, and waiting for the frames to be rewritten.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addBlurCommand(CLI::App& lumora, Context& context);

}  // namespace tool
