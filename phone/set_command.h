// The command `set`.
#pragma once

#include "command_line/command.h"

namespace phone {

void addSetCommand(CLI::App& lumora, command_line::Context& context);

}  // namespace phone
