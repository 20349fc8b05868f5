// What the home screen is doing.
#pragma once

#include "tool/command.h"

namespace tool {

void addStatusCommand(CLI::App& lumora, Context& context);

}  // namespace tool
