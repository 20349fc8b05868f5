// Sets up the library once the host has finished launching.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

// The host's original method, set when it is replaced.
extern void (*previousApplicationDidFinishLaunching)(platform::id self, platform::SEL selector,
                                                     platform::id application);

// Calls the original method, then creates tweakQueue and the library directory, registers for
// control notifications and rotations, and starts the first wallpaper if one is set. An exception
// ends this set-up silently. Main thread.
void applicationDidFinishLaunching(platform::id self, platform::SEL selector,
                                   platform::id application);

}  // namespace lumora
