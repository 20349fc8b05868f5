// What the library needs of the device's C++ library, whose objects are laid out in another way
// than ours.
#pragma once

#include <string>

// The address of a function; nullptr if it is not among those that are here.
void* cxxFunction(const std::string& name);
