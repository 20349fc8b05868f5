// The text that --help prints.
#pragma once

#include <memory>

#include <CLI/CLI.hpp>

namespace command_line {

struct Program;

// Returns what makes the help of the program and of its commands, for terminals of 80 columns.
// program must outlive it.
std::shared_ptr<CLI::FormatterBase> helpFormatter(const Program& program);

}  // namespace command_line
