// What the library sets up once the host has finished launching.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

// The host's own method, filled in when it is replaced.
extern void (*previousApplicationDidFinishLaunching)(platform::id self, platform::SEL selector,
                                                     platform::id application);

// Runs the host's own launch work, then makes the work queue and the library directory, registers
// for control notifications and rotations, and starts the first wallpaper if one is set. Main
// thread.
void applicationDidFinishLaunching(platform::id self, platform::SEL selector,
                                   platform::id application);

}  // namespace lumora
