// The changes that the library makes to the host's classes when it is loaded.
#pragma once

namespace lumora {

// Replaces three methods and adds one. Skips those whose class or method does not exist. Called
// once, on the thread that loads the library.
void installHooks();

}  // namespace lumora
