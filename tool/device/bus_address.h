// The address of a device's message bus: a socket with a path.
#pragma once

#include <string>

#include "tool/support/time_limit.h"

namespace tool {

enum class BusState {
  // Nobody listens, or a program of another user does.
  Absent,
  // Somebody listens, but does not answer in time.
  Silent,
  Answering,
};

// Begins to log in, as every client does, and goes away again; so it never waits longer than said.
BusState stateOfBus(const std::string& address, Seconds timeout);

}  // namespace tool
