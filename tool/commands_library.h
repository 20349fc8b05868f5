// The entry of the library with all commands, which the program loads by name.
#pragma once

// Parses and performs a line, given as its words without the program's name. Returns the exit code.
// Throws tool::Failure.
extern "C" int lumoraPerformLine(int count, char** words);
