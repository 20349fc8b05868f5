// The command `remove`.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addRemoveCommand(CLI::App& lumora, Context& context);

}  // namespace tool
