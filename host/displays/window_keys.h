// Does what the window's keys ask for. Main thread.
#pragma once

#include <SDL2/SDL_keyboard.h>

#include "host/home_screen/spring_board.h"

namespace host {

// Takes a key that was pressed.
void handleKey(const SDL_Keysym& key, SpringBoard& springBoard);

// Takes a text that was typed, because the key of a character differs from layout to layout.
void handleText(const char* text, SpringBoard& springBoard);

}  // namespace host
