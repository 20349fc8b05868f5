// Commands for the host process: waiting for it, ending it, moving its clock.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addHostCommands(CLI::App& lumora, Context& context);

}  // namespace tool
