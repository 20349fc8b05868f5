// A scenario: a text file of commands and of expectations of the status.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addPlayCommand(CLI::App& lumora, Context& context);

}  // namespace tool
