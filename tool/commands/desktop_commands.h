// The commands for a desktop: outputs, pause, resume and toggle.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addDesktopCommands(CLI::App& lumora, Context& context);

}  // namespace tool
