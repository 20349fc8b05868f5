// Where this program's own files are.
#pragma once

#include <string>

namespace tool {

// Returns the path of a file in the folder of this program, whether it exists or not.
std::string besideThisProgram(const char* name);

}  // namespace tool
