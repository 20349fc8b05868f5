// The real home screen with the library's hooks, headless, on a real bus and on the device of
// device.h: one for the whole process, whose clock stands still.
#pragma once

#include <cstdint>
#include <string>

#include "host/home_screen/spring_board.h"

namespace fuzz {

// Launched at the first call. Main thread, as are the others.
host::SpringBoard& springBoard();

const std::string& busAddress();

// Does what is due, until nothing is left to do. Ends the process if that takes a minute.
void settle();

// One of all that can happen to a home screen: a notification of the settings program, a hand on
// the device, or a refresh of its display.
void perform(std::uint8_t action);

}  // namespace fuzz
