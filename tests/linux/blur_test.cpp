#include "gifview/blur.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "platform/image_filter.h"
#include "platform/linux/images/picture/picture.h"

namespace {

using namespace platform;
using namespace platform::backend;

ImageRef noise(int width, int height, bool isOpaque) {
  std::mt19937 random(7);
  Bytes pixels(static_cast<std::size_t>(width * height) * 4);
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    pixels[at] = static_cast<std::uint8_t>(random());
    if (isOpaque && at % 4 == 3) pixels[at] = 255;
  }
  return imageFromPixels(width, height, pixels);
}

// Colored areas with sharp borders, some translucent: harder than noise, which blurs to gray.
ImageRef areas(int width, int height, bool isOpaque) {
  std::mt19937 random(11);
  Bytes pixels(static_cast<std::size_t>(width * height) * 4);
  for (int area = 0; area < 40; ++area) {
    const int left = static_cast<int>(random() % static_cast<unsigned>(width));
    const int top = static_cast<int>(random() % static_cast<unsigned>(height));
    const std::array<std::uint8_t, 4> color{
        static_cast<std::uint8_t>(random() % 2 * 255), static_cast<std::uint8_t>(random()),
        static_cast<std::uint8_t>(random()),
        static_cast<std::uint8_t>(isOpaque ? 255 : random() % 3 * 127)};
    for (int y = area == 0 ? 0 : top; y < height; ++y) {
      for (int x = area == 0 ? 0 : left; x < width; ++x) {
        std::copy(color.begin(), color.end(), &pixels[static_cast<std::size_t>(y * width + x) * 4]);
      }
    }
  }
  return imageFromPixels(width, height, pixels);
}

using Planes = std::vector<std::array<double, 4>>;

// A blur in one direction by its definition, transposed: every value is the weighted mean of its
// line, which is transparent outside the image.
Planes blurredLines(const Planes& planes, int width, int height, int radius) {
  Planes turned(planes.size());
  const int reach = std::min(8 * radius, width);
  double total = 1;
  for (int offset = 1; offset <= 8 * radius; ++offset) {
    total += 2 * std::exp(-offset * offset / (2.0 * radius * radius));
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int place = x * height + y;
      auto& sum = turned[static_cast<std::size_t>(place)];
      for (int at = std::max(0, x - reach); at <= std::min(width - 1, x + reach); ++at) {
        const double weight = std::exp(-(at - x) * (at - x) / (2.0 * radius * radius)) / total;
        const int from = y * width + at;
        const auto& value = planes[static_cast<std::size_t>(from)];
        for (std::size_t channel = 0; channel < 4; ++channel)
          sum[channel] += weight * value[channel];
      }
    }
  }
  return turned;
}

Planes premultiplied(const UIImage& image) {
  const Bytes pixels = pixelsOf(image);
  Planes planes(pixels.size() / 4);
  for (std::size_t at = 0; at < planes.size(); ++at) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      planes[at][channel] = pixels[at * 4 + channel] * pixels[at * 4 + 3] / 255.0;
    }
    planes[at][3] = pixels[at * 4 + 3];
  }
  return planes;
}

// Returns the largest error of a premultiplied value: the most that can show on a background.
double largestError(const ImageRef& image, int radius) {
  const int width = image->width();
  const int height = image->height();
  const Planes exact = blurredLines(blurredLines(premultiplied(*image), width, height, radius),
                                    height, width, radius);
  const auto blurred = lumora::blurImageWithRadius(image, radius);
  EXPECT_EQ(blurred->width(), width);
  EXPECT_EQ(blurred->height(), height);
  const Planes found = premultiplied(*blurred);
  double largest = 0;
  for (std::size_t at = 0; at < exact.size(); ++at) {
    for (std::size_t channel = 0; channel < 4; ++channel) {
      largest = std::max(largest, std::abs(exact[at][channel] - found[at][channel]));
    }
  }
  return largest;
}

TEST(Blur, MatchesAGaussianWithinOneColorLevel) {
  for (const bool isOpaque : {true, false}) {
    for (int radius = 1; radius <= 100; radius += radius < 12 ? 1 : 11) {
      EXPECT_LE(largestError(areas(131, 94, isOpaque), radius), 1) << radius << " " << isOpaque;
      EXPECT_LE(largestError(noise(37, 50, isOpaque), radius), 1) << radius << " " << isOpaque;
    }
  }
}

TEST(Blur, MatchesAGaussianOnTinyImages) {
  for (const int width : {1, 2, 3, 5}) {
    for (const int radius : {1, 4, 30}) {
      EXPECT_LE(largestError(noise(width, 4 - width / 2, true), radius), 1) << width;
    }
  }
}

TEST(Blur, GivesTheSameResultForIndexedAndRgbaInput) {
  const PictureShape shape{50, 40, PixelFormat::Indexed};
  auto palette = std::make_shared<Palette>();
  palette->colors = {{{0, 0, 0, 0}, {255, 10, 0, 255}, {9, 200, 77, 255}}};
  palette->count = 3;
  Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    for (int row = 0; row < strip->rowCount(); ++row) {
      for (int x = 0; x < 50; ++x) strip->row(row)[x] = static_cast<std::uint8_t>(x * row / 7 % 3);
    }
    strips.push_back(strip);
  }
  const auto indexed = makeImage(shape, palette, strips);
  EXPECT_LE(largestError(indexed, 2), 1);
  const auto colorful = imageFromPixels(50, 40, pixelsOf(*indexed));
  EXPECT_EQ(pixelsOf(*lumora::blurImageWithRadius(indexed, 5)),
            pixelsOf(*lumora::blurImageWithRadius(colorful, 5)));
}

TEST(Blur, KeepsTheImageAtRadiusZeroOrLess) {
  const auto image = noise(5, 4, false);
  EXPECT_EQ(pixelsOf(*lumora::blurImageWithRadius(image, 0)), pixelsOf(*image));
  EXPECT_EQ(pixelsOf(*lumora::blurImageWithRadius(image, -4)), pixelsOf(*image));
  EXPECT_EQ(lumora::blurImageWithRadius(image, lumora::blurRadius(1e30F))->width(), 5);
}

TEST(Blur, ExtendsBeyondTheImageOnEverySide) {
  const auto image = noise(5, 4, true);
  const auto blurred = CIImage::gaussianBlur(image, 2);
  const CGRect extent = blurred.extent();
  EXPECT_LT(extent.x, 0);
  EXPECT_EQ(extent.width - 5, -2 * extent.x);
  EXPECT_GT(pixelsOf(*blurred.render({-2, -2, 3, 3})).at(3), 0);
  EXPECT_EQ(pixelsOf(*blurred.render({-100, -100, 1, 1})).at(3), 0);
}

TEST(BlurRadius, TruncatesTheSettingTowardZero) {
  EXPECT_EQ(lumora::blurRadius(0.9F), 0);
  EXPECT_EQ(lumora::blurRadius(3.9F), 3);
  EXPECT_EQ(lumora::blurRadius(-3.9F), -3);
  EXPECT_GT(lumora::blurRadius(1e30F), 2000000000);
}

}  // namespace
