// The host's own wallpaper, reached by name at run time. Any thread; what the host does not have is
// nullptr or 0.
#pragma once

#include <memory>

#include "placement/location_table.h"
#include "platform/geometry.h"
#include "platform/objc_runtime.h"
#include "platform/view.h"

namespace lumora {

// The wallpaper controller; its class is looked up once.
platform::id sharedWallpaperController();

// The host's wallpaper view of a location, read afresh from the controller.
std::shared_ptr<platform::UIView> hostWallpaperView(platform::id controller,
                                                    const LocationEntry& entry);

// The dock's default height in points, as the host's dock class says it.
platform::CGFloat defaultDockHeight();

}  // namespace lumora
