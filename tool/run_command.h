// Starting a device's home screen.
#pragma once

#include "tool/command.h"

namespace tool {

void addRunCommand(CLI::App& lumora, Context& context);

}  // namespace tool
