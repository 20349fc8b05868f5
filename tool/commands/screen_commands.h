// What a user does with the screen: locking it, opening apps, turning the device; and its picture.
#pragma once

#include "tool/commands/command.h"

namespace tool {

void addScreenCommands(CLI::App& lumora, Context& context);

}  // namespace tool
