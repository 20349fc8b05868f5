// The scaling setting, applied to a view.
#pragma once

#include <memory>
#include <string>

#include "gifview/gif_view.h"

namespace lumora {

// Any thread; queues the change on the main queue and does not wait. The identifier says whose
// setting counts; an unknown one changes nothing.
void updateScalingModeOfWallpaper(const std::shared_ptr<LWGIFView>& view,
                                  const std::string& identifier);

}  // namespace lumora
