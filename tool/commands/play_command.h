// The command `play`, which runs a script of commands and `expect` checks.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addPlayCommand(CLI::App& lumora, Context& context);

}  // namespace tool
