// Texts of others on the user's terminal.
#pragma once

#include <string>

namespace tool {

// The text as it is to be printed to a stream of this descriptor: on a terminal, characters that
// would do something there, such as moving the cursor, are shown as escapes like \x1b.
std::string printable(const std::string& text, int descriptor);

}  // namespace tool
