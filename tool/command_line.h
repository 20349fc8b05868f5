// Parses and performs one lumora command line.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// What a line asks for, given as its words without the program's name. To be called once, it does
// that, and gives the exit code or throws Failure. Parsing does nothing yet; throws Failure if the
// line is wrong.
std::function<int()> parseLine(std::vector<std::string> words);

// Both in one.
int performLine(std::vector<std::string> words);

// Calls visit with all commands and their options, for documents that are made from them.
void withCommands(const std::function<void(const CLI::App& lumora)>& visit);

}  // namespace tool
