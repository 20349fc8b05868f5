// The words for commands and their options in help texts, man pages and completions.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace command_line {

using Options = std::vector<const CLI::Option*>;

// Returns the arguments of a command in their order, or its options, with --help at the end.
Options argumentsOf(const CLI::App& command);
Options optionsOf(const CLI::App& command);

// Returns "--" and the name. Requires an option, not an argument.
std::string longName(const CLI::Option& option);

// Returns the name of the value, such as DIR or on|off.
std::string valueName(const CLI::Option& option);

// Returns the words that the option accepts. It may accept others, too.
std::vector<std::string> choicesOf(const CLI::Option& option);

// Returns true if the argument cannot be left out. Its text says "REQUIRED" if the parser cannot
// know that.
bool isRequired(const CLI::Option& argument);

bool takesValue(const CLI::Option& option);

// Returns the description with the choices, unless the text or the name of the value contains them,
// and with the default.
std::string descriptionOf(const CLI::Option& option);

// Returns the command's name and arguments, such as "set [LOCATION] GIF".
std::string synopsisOf(const CLI::App& command);

// Returns the text with a capital and a full stop.
std::string sentence(std::string text);

}  // namespace command_line
