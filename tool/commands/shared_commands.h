// The commands that lumora shares with the command line on the phone.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addSharedCommands(CLI::App& lumora, Context& context);

}  // namespace tool
