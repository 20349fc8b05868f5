#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include "platform/image_filter.h"
#include "platform/linux/out_of_memory.h"
#include "platform/linux/picture.h"

namespace platform {
namespace {

// Beyond four standard deviations the weights are below a thousandth of the last bit.
constexpr int deviationsReached = 4;

// A blur past any picture's size only fades it; this bound keeps absurd settings computable.
constexpr int largestRadius = 4096;

// Weights of the offsets from -reach to reach; their sum is 1.
std::vector<float> kernel(int radius) {
  const int reach = deviationsReached * radius;
  std::vector<double> weights(static_cast<std::size_t>(reach) * 2 + 1);
  for (std::size_t at = 0; at < weights.size(); ++at) {
    const double deviations = (static_cast<double>(at) - reach) / radius;
    weights[at] = std::exp(-deviations * deviations / 2);
  }
  const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
  std::vector<float> normalised(weights.size());
  std::transform(weights.begin(), weights.end(), normalised.begin(),
                 [sum](double weight) { return static_cast<float>(weight / sum); });
  return normalised;
}

// Four premultiplied channels per pixel, 0 to 255.
struct Plane {
  int width;
  int height;
  std::vector<float> values;

  const float* pixel(int x, int y) const {
    return &values[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                    static_cast<std::size_t>(x)) *
                   4];
  }
};

Plane premultiplied(const UIImage& image) {
  const Bytes pixels = pixelsOf(image);
  Plane plane{image.width(), image.height(), std::vector<float>(pixels.size())};
  for (std::size_t at = 0; at < pixels.size(); at += 4) {
    const float alpha = pixels[at + 3];
    for (std::size_t channel = 0; channel < 3; ++channel) {
      plane.values[at + channel] = pixels[at + channel] * alpha / 255;
    }
    plane.values[at + 3] = alpha;
  }
  return plane;
}

// One direction of the blur, turned over: pixel (x, y) of the result is the weighted sum around
// (start + y, x) of the input, so that two passes restore the orientation. Outside is transparent.
Plane blurredAndTurned(const Plane& input, const std::vector<float>& weights, int start,
                       int length) {
  Plane output{input.height, length, {}};
  output.values.resize(static_cast<std::size_t>(output.width) * static_cast<std::size_t>(length) *
                       4);
  const int reach = static_cast<int>(weights.size() / 2);
  float* target = output.values.data();
  for (int y = 0; y < length; ++y) {
    const int first = std::max(start + y - reach, 0);
    const int last = std::min(start + y + reach, input.width - 1);
    for (int x = 0; x < input.height; ++x, target += 4) {
      for (int at = first; at <= last; ++at) {
        const int offset = at - start - y + reach;
        const float weight = weights[static_cast<std::size_t>(offset)];
        const float* source = input.pixel(at, x);
        for (int channel = 0; channel < 4; ++channel) target[channel] += weight * source[channel];
      }
    }
  }
  return output;
}

ImageRef straight(const Plane& plane) {
  Bytes pixels(plane.values.size());
  auto rounded = [](float value) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
  };
  for (std::size_t at = 0; at < plane.values.size(); at += 4) {
    const std::uint8_t alpha = rounded(plane.values[at + 3]);
    if (alpha == 0) continue;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      pixels[at + channel] = rounded(plane.values[at + channel] * 255 / plane.values[at + 3]);
    }
    pixels[at + 3] = alpha;
  }
  return imageFromPixels(plane.width, plane.height, pixels);
}

}  // namespace

CIImage::CIImage(ImageRef input, int radius) : input_(std::move(input)), radius_(radius) {}

CIImage CIImage::gaussianBlur(const ImageRef& input, int radius) {
  return CIImage(input, std::clamp(radius, 0, largestRadius));
}

CGRect CIImage::extent() const {
  const int reach = deviationsReached * radius_;
  return {static_cast<CGFloat>(-reach), static_cast<CGFloat>(-reach),
          static_cast<CGFloat>(input_->width() + 2 * reach),
          static_cast<CGFloat>(input_->height() + 2 * reach)};
}

ImageRef CIImage::render(CGRect rectangle) const {
  const int x = static_cast<int>(std::lround(rectangle.x));
  const int y = static_cast<int>(std::lround(rectangle.y));
  const int width = static_cast<int>(std::lround(rectangle.width));
  const int height = static_cast<int>(std::lround(rectangle.height));
  const bool isWhole = x == 0 && y == 0 && width == input_->width() && height == input_->height();
  if (radius_ == 0 && isWhole) return input_;
  return unlessOutOfMemory([&] {
    const std::vector<float> weights = radius_ == 0 ? std::vector<float>{1} : kernel(radius_);
    const Plane turned = blurredAndTurned(premultiplied(*input_), weights, x, width);
    return straight(blurredAndTurned(turned, weights, y, height));
  });
}

}  // namespace platform
