// Does on the home screen what a gesture asks for. Main thread.
#pragma once

#include "host/home_screen/gesture_recognizer.h"
#include "host/home_screen/spring_board.h"

namespace host {

// A tap opens an app, goes home from the home bar, or switches the display on. A swipe unlocks,
// goes home or locks. Any gesture closes the card with the keys, and nothing else, if it is shown.
void perform(const Gesture& gesture, SpringBoard& springBoard);

}  // namespace host
