// Pictures to measure with, made by arithmetic: the same every time.
#pragma once

#include "platform/image.h"

namespace bench {

constexpr int screenWidth = 1170;
constexpr int screenHeight = 2532;

// Straight RGBA, opaque: soft colours with sharp shapes.
platform::Bytes photoPixels(int width, int height);

// 256 colours. What is dithered is noisy everywhere; moving shifts the lower part, a number of
// pixels, and leaves the rest as it is.
enum class Texture { Dithered, Flat };
platform::ImageRef indexedPicture(Texture texture, int width, int height, int moved = 0);

}  // namespace bench
