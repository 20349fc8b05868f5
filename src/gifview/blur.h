// Blurring of frames. Any thread.
#pragma once

#include <cstdint>

#include "platform/image.h"

namespace lumora {

// Returns the image with a Gaussian blur, at the same size, or nullptr if memory runs out. radius
// is the standard deviation in pixels. Requires an image that is not nullptr.
platform::ImageRef blurImageWithRadius(const platform::ImageRef& image, std::int32_t radius);

// Returns the setting truncated toward zero, as a radius in pixels.
std::int32_t blurRadius(float setting);

}  // namespace lumora
