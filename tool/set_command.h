// Choosing a GIF for a location.
#pragma once

#include "tool/command.h"

namespace tool {

void addSetCommand(CLI::App& lumora, Context& context);

}  // namespace tool
