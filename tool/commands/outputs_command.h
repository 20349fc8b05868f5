// The command outputs: lists the outputs of a desktop.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addOutputsCommand(CLI::App& lumora, Context& context);

}  // namespace tool
