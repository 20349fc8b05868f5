// The command `trace`.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addTraceCommand(CLI::App& lumora, Context& context);

}  // namespace tool
