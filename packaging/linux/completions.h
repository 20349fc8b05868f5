// Writes a shell's completions of lumora to standard output.
#pragma once

#include <CLI/CLI.hpp>

namespace completions {

void writeBash(const CLI::App& lumora);
void writeZsh(const CLI::App& lumora);
void writeFish(const CLI::App& lumora);

}  // namespace completions
