// The command `status`.
#pragma once

#include "command_line/command.h"

namespace phone {

void addStatusCommand(CLI::App& lumora, command_line::Context& context);

}  // namespace phone
