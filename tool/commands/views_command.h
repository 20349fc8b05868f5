// The command `views`.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addViewsCommand(CLI::App& lumora, Context& context);

}  // namespace tool
