// Parses and performs one lumora command line.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

// What a line asks for, given as its words without the program's name. To be called once, it does
// that, and gives the exit code or throws Failure. Parsing does nothing yet; throws Failure if the
// line is wrong.
std::function<int()> parseLine(std::vector<std::string> words);

// Both in one.
int performLine(std::vector<std::string> words);

}  // namespace tool
