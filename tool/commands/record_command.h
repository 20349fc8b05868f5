// The command `record`, which makes a video of the screen.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addRecordCommand(CLI::App& lumora, Context& context);

}  // namespace tool
