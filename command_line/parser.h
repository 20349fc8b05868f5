// Parses the command lines of a program whose first argument is a command.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "command_line/command.h"
#include "command_line/program.h"

namespace command_line {

// Prepares the program: its description, help, version and the command "help". The caller declares
// all other commands. All must outlive the parsing.
void declare(CLI::App& app, Context& context, const Program& program);

// Parses a line, given as its words without the program's name. Returns a function that performs it
// and returns the exit code, or throws Failure; call it once. Parsing itself has no effect. Throws
// Failure if the line is wrong. app: with all commands, which refer to context.
std::function<int()> parse(CLI::App& app, std::shared_ptr<Context> context,
                           std::vector<std::string> words);

}  // namespace command_line
