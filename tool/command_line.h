// Parses and performs one lumora command line.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// Parses a line, given as its words without the program's name. Returns a function that performs it
// and returns the exit code, or throws Failure; call it once. Parsing itself has no effect. Throws
// Failure if the line is wrong.
std::function<int()> parseLine(std::vector<std::string> words);

// Parses and performs a line. Returns the exit code. Throws Failure.
int performLine(std::vector<std::string> words);

// Calls visit with all commands and their options, for documents that are made from them.
void withCommands(const std::function<void(const CLI::App& lumora)>& visit);

}  // namespace tool
