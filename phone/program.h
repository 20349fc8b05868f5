// The command line of lumora on the phone.
#pragma once

#include <string>
#include <vector>

namespace phone {

// Parses and performs one line, given as its words without the program's name. Returns the exit
// code. Throws Failure.
int performLine(std::vector<std::string> words);

}  // namespace phone
