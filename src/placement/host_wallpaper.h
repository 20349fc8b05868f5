// Access to the host's wallpaper, by name at run time. Any thread. Functions return
// nullptr if the host lacks the class, method or variable.
#pragma once

#include <memory>

#include "placement/view_slots.h"
#include "platform/objc_runtime.h"
#include "platform/view.h"

namespace lumora {

// Returns the host's wallpaper controller.
platform::id sharedWallpaperController();

// Returns the controller's present wallpaper view for a location.
std::shared_ptr<platform::UIView> hostWallpaperView(platform::id controller, const ViewSlot& slot);

}  // namespace lumora
