// How long to wait before a GIF's frame is shown.
#pragma once

#include <optional>

#include "platform/image_source.h"

namespace lumora {

// Returns the delay of a frame in seconds. As in all viewers, it is a tenth of a second if the file
// gives none or one of less than two hundredths.
double CGImageSourceGetGifFrameDelay(const platform::CGImageSource& source, int index);

// Returns the same for the given properties.
double gifFrameDelay(const std::optional<platform::ImageProperties>& properties);

}  // namespace lumora
