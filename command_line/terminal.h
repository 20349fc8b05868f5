// Makes text from files and other programs safe to print on a terminal.
#pragma once

#include <string>

namespace command_line {

// Returns the text to print to this descriptor. If that is a terminal, control characters other
// than newline and tab become escapes such as \x1b, and invalid UTF-8 becomes U+FFFD.
std::string printable(const std::string& text, int descriptor);

}  // namespace command_line
