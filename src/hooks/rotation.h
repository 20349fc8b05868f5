// Follows the rotation of the device.
#pragma once

#include "platform/objc_runtime.h"

namespace lumora {

constexpr auto deviceDidRotateSelector = "LumoraDeviceDidRotate:";

// Added to the host's application class and called at every rotation. Queues an installation if a
// wallpaper is set, whatever the orientation. Main thread.
void LumoraDeviceDidRotate(platform::id self, platform::SEL selector, platform::id notification);

}  // namespace lumora
