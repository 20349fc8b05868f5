// How long a GIF's frame is to be waited for.
#pragma once

#include <optional>

#include "platform/image_source.h"

namespace lumora {

// In seconds. Delays too short to be meant, and frames without any, get a tenth of a second, as all
// viewers do.
double CGImageSourceGetGifFrameDelay(const platform::CGImageSource& source, int index);

// The same rule for properties at hand.
double gifFrameDelay(const std::optional<platform::ImageProperties>& properties);

}  // namespace lumora
