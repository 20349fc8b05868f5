// The command forget.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addForgetCommand(CLI::App& lumora, Context& context);

}  // namespace tool
