// Options and arguments that accept numbers only.
#pragma once

#include <CLI/CLI.hpp>

namespace command_line {

// Returns a check that accepts decimal numbers from 0 to max.
CLI::Validator numberUpTo(long max);

}  // namespace command_line
