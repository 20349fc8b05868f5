// The address of a device's message bus: a socket with a path.
#pragma once

#include <string>

namespace tool {

// "" for an address of another kind.
std::string socketPath(const std::string& address);

// Whether somebody listens there.
bool isListening(const std::string& address);

}  // namespace tool
