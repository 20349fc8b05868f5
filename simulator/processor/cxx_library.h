// Implements the functions of the device's C++ library that the extension library uses. Objects
// have a different layout in this program's own C++ library.
#pragma once

#include <string>

// Returns the address of a function, or nullptr if it is not implemented.
void* cxxFunction(const std::string& name);
