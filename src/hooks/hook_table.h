// The changes that the library makes to the host's classes when it is loaded.
#pragma once

namespace lumora {

// Replaces three methods and adds one, all found by name, and does nothing else. Once, on the
// thread that loads the library.
void installHooks();

}  // namespace lumora
