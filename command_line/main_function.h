// What the main functions of programs have in common.
#pragma once

#include <functional>
#include <string>

namespace command_line {

// Performs work and returns its exit code, or prints on stderr why it has failed and returns the
// failure's code. Output that could not be written is a failure, so that a script does not take it
// for complete.
int runMain(const std::string& programName, const std::function<int()>& work);

}  // namespace command_line
