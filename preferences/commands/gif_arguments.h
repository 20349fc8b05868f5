// The arguments of `set`.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace preferences {

// Adds LOCATION, which can be left out, and GIF. Both texts must outlive the parsing.
void addLocationAndGif(CLI::App* command, std::string& location, std::string& path);

}  // namespace preferences
