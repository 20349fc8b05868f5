// The command `blur`.
#pragma once

#include "command_line/command.h"

namespace phone {

void addBlurCommand(CLI::App& lumora, command_line::Context& context);

}  // namespace phone
