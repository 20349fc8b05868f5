// Computed images for the benchmarks, the same every time.
#pragma once

#include "platform/image.h"

namespace bench {

constexpr int screenWidth = 1170;
constexpr int screenHeight = 2532;

// Opaque straight RGBA: gradients with sharp shapes.
platform::Bytes photoPixels(int width, int height);

// An image of 256 colors. Dithered is noisy everywhere. `moved` shifts the lowest tenth by a number
// of pixels.
enum class Texture { Dithered, Flat };
platform::ImageRef indexedPicture(Texture texture, int width, int height, int moved = 0);

}  // namespace bench
