#include "bench/pictures.h"

#include <cmath>

#include "platform/linux/images/picture/picture.h"

namespace bench {
namespace {

using namespace platform;
using namespace platform::backend;

std::uint8_t level(double value) {
  return static_cast<std::uint8_t>(std::lround(127.5 + 127.5 * value));
}

// A hash, for noise that does not depend on any library.
std::uint32_t noise(std::uint32_t x, std::uint32_t y) {
  std::uint32_t value = x * 0x9E3779B1U ^ y * 0x85EBCA77U;
  value ^= value >> 15;
  value *= 0x2C1B3C6DU;
  return value ^ value >> 13;
}

bool isInShape(int x, int y) {
  constexpr int pitch = 260;
  const int dx = x % pitch - pitch / 2;
  const int dy = y % pitch - pitch / 2;
  constexpr int radius = 90;
  return dx * dx + dy * dy < radius * radius;
}

}  // namespace

Bytes photoPixels(int width, int height) {
  Bytes pixels;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool inShape = isInShape(x, y);
      pixels.push_back(inShape ? 255 : level(std::sin(x * 0.011 + y * 0.004)));
      pixels.push_back(inShape ? 30 : level(std::cos(y * 0.007)));
      pixels.push_back(level(std::sin((x - y) * 0.009)));
      pixels.push_back(255);
    }
  }
  return pixels;
}

ImageRef indexedPicture(Texture texture, int width, int height, int moved) {
  auto palette = std::make_shared<Palette>();
  palette->count = maxColors;
  for (std::size_t index = 0; index < maxColors; ++index) {
    const auto value = static_cast<std::uint8_t>(index);
    palette->colors[index] = {value, static_cast<std::uint8_t>(255 - value / 2), 80, 255};
  }
  const PictureShape shape{width, height, PixelFormat::Indexed};
  Strips strips;
  int y = 0;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    for (int row = 0; row < strip->rowCount(); ++row, ++y) {
      const bool isMoving = y >= height * 9 / 10;
      for (int x = 0; x < width; ++x) {
        const int place = isMoving ? x + moved : x;
        const double soft = 100 + 90 * std::sin(place * 0.01 + y * 0.006);
        const double dither =
            noise(static_cast<std::uint32_t>(place), static_cast<std::uint32_t>(y)) % 24;
        strip->row(row)[x] = static_cast<std::uint8_t>(
            texture == Texture::Flat ? isInShape(place, y) * 90 + y / 64 : soft + dither);
      }
    }
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, std::move(palette), std::move(strips));
}

}  // namespace bench
