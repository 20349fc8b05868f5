// The library with all commands.

#include "tool/commands_library.h"

#include "tool/command_line.h"

int lumoraPerformLine(int count, char** words) {
  return tool::performLine({words, words + count});
}
