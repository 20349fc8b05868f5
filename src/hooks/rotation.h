// The device turns.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

constexpr auto deviceDidRotateSelector = "LumoraDeviceDidRotate:";

// Added to the host's application class: queues one installation for every turn while a wallpaper
// is set, whatever the orientation. Main thread.
void LumoraDeviceDidRotate(platform::id self, platform::SEL selector, platform::id notification);

}  // namespace lumora
