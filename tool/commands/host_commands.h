// The commands `wait`, `stop` and `advance`, which control the host process.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addHostCommands(CLI::App& lumora, Context& context);

}  // namespace tool
