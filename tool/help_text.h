// The text that --help prints.
#pragma once

#include <memory>

#include <CLI/CLI.hpp>

namespace tool {

// Returns what makes the help of lumora and of its commands, for terminals of 80 columns.
std::shared_ptr<CLI::FormatterBase> helpFormatter();

}  // namespace tool
