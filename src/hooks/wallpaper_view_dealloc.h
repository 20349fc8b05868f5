// Cleans up when one of the host's wallpaper views is destroyed.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

// The host's original dealloc, set when it is replaced.
extern void (*previousWallpaperViewDealloc)(platform::id self, platform::SEL selector);

// Removes the view's first observer if it is one of the library's listeners, then calls the
// original dealloc. Failures are silent. On the thread that destroys the view.
void deallocWallpaperView(platform::id self, platform::SEL selector);

}  // namespace lumora
