// The real home screen, headless, with the library's hooks, a real bus, the device folder of
// device.h and a manual clock. There is one per process.
#pragma once

#include <cstdint>
#include <string>

#include "host/home_screen/spring_board.h"

namespace fuzz {

// Launches the home screen at the first call. Main thread only, like the other functions.
host::SpringBoard& springBoard();

const std::string& busAddress();

// Runs until there is nothing left to do. Aborts if that takes a minute.
void settle();

// Performs one action: posts a notification of the settings app, does what a user does, or advances
// by one refresh of the display.
void perform(std::uint8_t action);

}  // namespace fuzz
