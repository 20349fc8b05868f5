// The examples in the help of the commands and in the man page.
#pragma once

#include <string>
#include <vector>

namespace tool {

// Returns command lines, which may end with a comment. name: of a command; "" gives the examples of
// lumora itself.
std::vector<std::string> examplesOf(const std::string& name);

}  // namespace tool
