// The scaling setting, applied to a view.
#pragma once

#include <memory>
#include <string>

#include "gifview/gif_view.h"

namespace lumora {

// Queues the change on the main queue and does not wait. Any thread. identifier: of the location
// whose setting counts, whichever view it is applied to; an unknown one changes nothing.
void updateScalingModeOfWallpaper(const std::shared_ptr<LWGIFView>& view,
                                  const std::string& identifier);

}  // namespace lumora
