// The command `remove`.
#pragma once

#include "command_line/command.h"

namespace phone {

void addRemoveCommand(CLI::App& lumora, command_line::Context& context);

}  // namespace phone
