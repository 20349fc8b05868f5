// The command `blur`, which stores the setting and waits until the frames are rewritten.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addBlurCommand(CLI::App& lumora, Context& context);

}  // namespace tool
