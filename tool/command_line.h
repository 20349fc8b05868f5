// One line for lumora: all commands, their arguments, and doing what is said.
#pragma once

#include <string>
#include <vector>

namespace tool {

// Performs a line, given as its words without the program's name; the exit code. Throws Failure.
int performLine(std::vector<std::string> words);

}  // namespace tool
