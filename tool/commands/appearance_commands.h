// The commands for what a running home screen takes over at once: mode, speed, alpha, blur,
// scaling.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addAppearanceCommands(CLI::App& lumora, Context& context);

}  // namespace tool
