// Settings that a running home screen follows at once: mode, speed, opacity, scaling.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addLiveSettingsCommands(CLI::App& lumora, Context& context);

}  // namespace tool
