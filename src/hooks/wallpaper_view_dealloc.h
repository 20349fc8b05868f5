// What happens when one of the host's wallpaper views dies.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

// The host's own dealloc, filled in when the method is replaced.
extern void (*previousWallpaperViewDealloc)(platform::id self, platform::SEL selector);

// Unregisters a listener of ours, if it is the view's first observer, and then lets the view die.
void deallocWallpaperView(platform::id self, platform::SEL selector);

}  // namespace lumora
