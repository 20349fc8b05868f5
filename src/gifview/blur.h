// Blurring of frames. Any thread.
#pragma once

#include <cstdint>

#include "platform/image.h"

namespace lumora {

// The picture behind a Gaussian blur, at its own size; nullptr if the memory does not suffice.
// radius: the standard deviation in pixels.
platform::ImageRef blurImageWithRadius(const platform::ImageRef& image, std::int32_t radius);

// The radius of a blur setting: the setting truncated toward zero.
std::int32_t blurRadius(float setting);

}  // namespace lumora
