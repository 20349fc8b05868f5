// Splits a line of a script into words.
#pragma once

#include <string>
#include <vector>

namespace tool {

// Returns the line's words, which are separated by white space. White space between single or
// double quotes does not separate. A word that begins with # begins a comment. Throws Failure if a
// closing quote is missing.
std::vector<std::string> wordsOfLine(const std::string& line);

}  // namespace tool
