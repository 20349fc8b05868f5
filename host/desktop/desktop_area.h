// The area that the wallpaper fills on an output.
#pragma once

#include <vector>

#include "host/home_screen/output.h"
#include "host/options/desktop_options.h"
#include "platform/geometry.h"

namespace host {

// Returns the rectangle that the wallpaper fills, in pixels from the output's corner: the output,
// or one that spans all of the outputs shown.
platform::CGRect areaOf(const Output& output, const std::vector<Output>& shown,
                        const DesktopOptions& options);

}  // namespace host
