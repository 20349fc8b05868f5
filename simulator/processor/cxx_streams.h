// Implements what the command needs of the streams and locales of the device's C++ library: writing
// texts to strings, and the kinds of letters.
#pragma once

#include <string>

// Returns the address of a function, or nullptr if it is not implemented.
void* streamFunction(const std::string& name);
