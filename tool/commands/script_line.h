// The words of one line of a script.
#pragma once

#include <string>
#include <vector>

namespace tool {

// Words are apart by white space; quotation marks, single or double, keep what is between them
// together. A word that begins with # begins a comment. Throws Failure if a quotation has no end.
std::vector<std::string> wordsOfLine(const std::string& line);

}  // namespace tool
