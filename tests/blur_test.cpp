#include "gifview/blur.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "platform/image_filter.h"
#include "platform/linux/picture.h"

namespace {

using namespace platform;

ImageRef noise(int width, int height, bool isOpaque) {
  std::mt19937 random(7);
  Bytes pixels(static_cast<std::size_t>(width * height) * 4);
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    pixels[at] = static_cast<std::uint8_t>(random());
    if (isOpaque && at % 4 == 3) pixels[at] = 255;
  }
  return imageFromPixels(width, height, pixels);
}

// The definition: every pixel the weighted mean of all others, transparent outside.
std::array<double, 4> blurredPixel(const UIImage& image, int radius, int x, int y) {
  const Bytes pixels = pixelsOf(image);
  std::array<double, 4> sum{};
  double total = 0;
  for (int dy = -6 * radius; dy <= 6 * radius; ++dy) {
    for (int dx = -6 * radius; dx <= 6 * radius; ++dx) {
      const double weight = std::exp(-(dx * dx + dy * dy) / (2.0 * radius * radius));
      total += weight;
      const int px = x + dx;
      const int py = y + dy;
      if (px < 0 || py < 0 || px >= image.width() || py >= image.height()) continue;
      const auto* pixel = &pixels[static_cast<std::size_t>(py * image.width() + px) * 4];
      for (std::size_t channel = 0; channel < 3; ++channel) {
        sum[channel] += weight * pixel[channel] * pixel[3] / 255;
      }
      sum[3] += weight * pixel[3];
    }
  }
  for (double& value : sum) value /= total;
  for (std::size_t channel = 0; channel < 3; ++channel) sum[channel] *= 255 / sum[3];
  return sum;
}

TEST(Blur, IsATrueGaussianOfTheRadiusAtThePicturesOwnSize) {
  for (const bool isOpaque : {true, false}) {
    const auto image = noise(23, 17, isOpaque);
    for (const int radius : {1, 3, 10}) {
      const auto blurred = lumora::blurImageWithRadius(image, radius);
      ASSERT_EQ(blurred->width(), 23);
      ASSERT_EQ(blurred->height(), 17);
      const Bytes pixels = pixelsOf(*blurred);
      for (const auto& [x, y] : {std::pair(0, 0), std::pair(11, 8), std::pair(22, 5)}) {
        const auto expected = blurredPixel(*image, radius, x, y);
        const auto* pixel = &pixels[static_cast<std::size_t>(y * 23 + x) * 4];
        for (std::size_t channel = 0; channel < 4; ++channel) {
          EXPECT_NEAR(pixel[channel], expected[channel], 1) << radius << " " << x << " " << channel;
        }
      }
    }
  }
}

TEST(Blur, OfRadiusZeroGivesThePictureBack) {
  const auto image = noise(5, 4, false);
  EXPECT_EQ(pixelsOf(*lumora::blurImageWithRadius(image, 0)), pixelsOf(*image));
  EXPECT_EQ(pixelsOf(*lumora::blurImageWithRadius(image, -4)), pixelsOf(*image));
  EXPECT_EQ(lumora::blurImageWithRadius(image, lumora::blurRadius(1e30F))->width(), 5);
}

TEST(Blur, ReachesPastThePictureOnEverySide) {
  const auto image = noise(5, 4, true);
  const auto blurred = CIImage::gaussianBlur(image, 2);
  const CGRect extent = blurred.extent();
  EXPECT_LT(extent.x, 0);
  EXPECT_EQ(extent.width - 5, -2 * extent.x);
  EXPECT_GT(pixelsOf(*blurred.render({-2, -2, 3, 3})).at(3), 0);
  EXPECT_EQ(pixelsOf(*blurred.render({-100, -100, 1, 1})).at(3), 0);
}

TEST(BlurRadius, IsTheSettingTruncatedTowardZero) {
  EXPECT_EQ(lumora::blurRadius(0.9F), 0);
  EXPECT_EQ(lumora::blurRadius(3.9F), 3);
  EXPECT_EQ(lumora::blurRadius(-3.9F), -3);
  EXPECT_GT(lumora::blurRadius(1e30F), 2000000000);
}

}  // namespace
