// Applies the scaling setting to a view.
#pragma once

#include <memory>
#include <string>

#include "gifview/gif_view.h"

namespace lumora {

// Queues the change on the main queue and returns. Any thread. identifier names the location whose
// setting is read, which need not be the view's own; an unknown one changes nothing.
void updateScalingModeOfWallpaper(const std::shared_ptr<LWGIFView>& view,
                                  const std::string& identifier);

}  // namespace lumora
