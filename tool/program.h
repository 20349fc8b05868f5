// What the help and the man page say about lumora beside its commands.
#pragma once

#include "command_line/program.h"

namespace tool {

const command_line::Program& theProgram();

}  // namespace tool
