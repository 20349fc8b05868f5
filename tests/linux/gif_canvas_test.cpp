#include <algorithm>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "platform/linux/images/gif/canvas.h"

namespace {

using namespace platform;
using namespace platform::backend;
using gif::Canvas;
using gif::ColorTable;
using gif::SubImage;

constexpr int width = 40;
constexpr int height = 33;

// The same rules, pixel by pixel, in RGBA.
class PlainCanvas {
 public:
  void draw(const SubImage& image, const ColorTable& colors, const Bytes& indices) {
    std::size_t next = 0;
    for (const int row : rowOrder(image)) {
      for (int column = 0; column < image.width; ++column) {
        const std::uint8_t index = indices[next++];
        const int x = image.left + column;
        const int y = image.top + row;
        if (x >= width || y >= height || index >= colors.size()) continue;
        if (index == image.transparentIndex) continue;
        pixel(x, y) = {colors[index][0], colors[index][1], colors[index][2], 255};
      }
    }
  }

  void clear(const SubImage& image) {
    for (int y = image.top; y < std::min(image.top + image.height, height); ++y) {
      for (int x = image.left; x < std::min(image.left + image.width, width); ++x) {
        pixel(x, y) = {};
      }
    }
  }

  Bytes pixels() const {
    Bytes bytes;
    for (const RGBAColor& color : colors_) bytes.insert(bytes.end(), color.begin(), color.end());
    return bytes;
  }

  std::size_t countColors() const { return std::set(colors_.begin(), colors_.end()).size(); }

 private:
  static std::vector<int> rowOrder(const SubImage& image) {
    std::vector<int> rows;
    if (!image.interlaced) {
      for (int row = 0; row < image.height; ++row) rows.push_back(row);
      return rows;
    }
    for (int row = 0; row < image.height; row += 8) rows.push_back(row);
    for (int row = 4; row < image.height; row += 8) rows.push_back(row);
    for (int row = 2; row < image.height; row += 4) rows.push_back(row);
    for (int row = 1; row < image.height; row += 2) rows.push_back(row);
    return rows;
  }

  RGBAColor& pixel(int x, int y) { return colors_[static_cast<std::size_t>(y) * width + x]; }

  std::vector<RGBAColor> colors_ = std::vector<RGBAColor>(static_cast<std::size_t>(width) * height);
};

struct Drawing {
  SubImage image;
  ColorTable colors;
  Bytes indices;
};

// colorRange is the number of different colors that all drawings together may have.
Drawing randomDrawing(std::mt19937& random, unsigned colorRange) {
  auto below = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  Drawing drawing;
  SubImage& image = drawing.image;
  const bool isWhole = below(3) == 0;
  image.left = static_cast<std::uint16_t>(isWhole ? 0 : below(width + 5));
  image.top = static_cast<std::uint16_t>(isWhole ? 0 : below(height + 5));
  image.width = static_cast<std::uint16_t>(isWhole ? width + below(2) : 1 + below(width));
  image.height = static_cast<std::uint16_t>(isWhole ? height + below(2) : 1 + below(height));
  image.interlaced = below(4) == 0;
  image.minimumCodeSize = static_cast<std::uint8_t>(1 + below(8));
  const unsigned possible = 1U << image.minimumCodeSize;
  if (below(2) == 0) image.transparentIndex = static_cast<std::uint8_t>(below(possible));
  const unsigned count = below(8) == 0 ? 2 + below(possible) : possible;
  for (unsigned each = 0; each < std::min(count, 256U); ++each) {
    const unsigned color = below(colorRange);
    drawing.colors.push_back({static_cast<std::uint8_t>(color),
                              static_cast<std::uint8_t>(color >> 8),
                              static_cast<std::uint8_t>(color * 3)});
  }
  const unsigned used = 1 + below(possible);
  for (int each = 0; each < image.width * image.height; ++each) {
    drawing.indices.push_back(static_cast<std::uint8_t>(below(used)));
  }
  return drawing;
}

// A palette is used whenever one can hold the colors.
TEST(GifCanvas, MatchesPlainDrawingForAnyNumberOfColors) {
  for (const unsigned colorRange : {5U, 200U, 600U, 5000U}) {
    std::mt19937 random(colorRange);
    Canvas canvas(width, height);
    PlainCanvas plain;
    std::optional<std::pair<Canvas::Contents, PlainCanvas>> saved;
    int changesOfFormat = 0;
    bool wasRGBA = false;
    ColorTable lastColors;
    for (int step = 0; step < 400; ++step) {
      Drawing drawing = randomDrawing(random, colorRange);
      if (lastColors.size() == drawing.colors.size()) drawing.colors = lastColors;
      lastColors = drawing.colors;
      if (random() % 6 == 0) saved.emplace(canvas.save(), plain);
      if (random() % 5 == 0) {
        canvas.clear(drawing.image);
        plain.clear(drawing.image);
      }
      canvas.draw(drawing.image, drawing.colors, drawing.indices);
      plain.draw(drawing.image, drawing.colors, drawing.indices);
      if (saved && random() % 6 == 0) {
        canvas.restore(saved->first);
        plain = saved->second;
      }
      const ImageRef picture = canvas.picture();
      ASSERT_EQ(pixelsOf(*picture), plain.pixels()) << colorRange << " " << step;
      const bool isRGBA = picture->impl().shape.format == PixelFormat::RGBA;
      ASSERT_EQ(isRGBA, plain.countColors() > 256) << colorRange << " " << step;
      changesOfFormat += std::exchange(wasRGBA, isRGBA) != isRGBA ? 1 : 0;
    }
    EXPECT_EQ(changesOfFormat > 1, colorRange > 1000) << colorRange;
  }
}

// Then its images are copied, which is faster than translating each one.
TEST(GifCanvas, TakesOverTheIndicesOfARepeatedPalette) {
  constexpr int side = 200;
  constexpr std::size_t shown = 150;
  Canvas canvas(side, side);
  SubImage image;
  image.width = image.height = side;
  image.minimumCodeSize = 8;
  ColorTable colors(256);
  for (std::size_t index = 0; index < colors.size(); ++index) {
    colors[index] = {static_cast<std::uint8_t>(index), 0, 0};
  }
  Bytes indices(std::size_t{side} * side, shown);
  canvas.draw(image, colors, indices);
  std::rotate(colors.begin(), colors.begin() + 1, colors.end());
  // A hidden pixel keeps the palette from being replaced.
  image.transparentIndex = indices.front() = 255;
  for (const std::size_t expected : {shown + 1, shown}) {
    canvas.draw(image, colors, indices);
    const UIImage::Impl& picture = canvas.picture()->impl();
    EXPECT_EQ(picture.row(1)[0], expected);
    EXPECT_EQ(picture.palette->colors[expected][0], shown + 1);
    EXPECT_EQ(picture.palette->colors[picture.row(0)[0]][0], shown);
  }
}

TEST(GifCanvas, UsesAPaletteAgainWhenFewColorsAreLeft) {
  constexpr int side = 100;
  Canvas canvas(side, side);
  SubImage upper;
  upper.width = side;
  upper.height = side / 2;
  upper.minimumCodeSize = 8;
  SubImage lower = upper;
  lower.top = side / 2;
  Bytes indices(std::size_t{side} * side / 2);
  for (std::size_t at = 0; at < indices.size(); ++at) indices[at] = static_cast<std::uint8_t>(at);
  ColorTable colors(256);
  for (std::size_t at = 0; at < colors.size(); ++at) colors[at][0] = static_cast<std::uint8_t>(at);
  ColorTable others = colors;
  for (auto& color : others) color[1] = 1;
  auto formatOf = [](const ImageRef& image) { return image->impl().shape.format; };
  for (int round = 0; round < 2; ++round) {
    canvas.draw(upper, colors, indices);
    canvas.draw(lower, others, indices);
    const ImageRef colorful = canvas.picture();
    EXPECT_EQ(formatOf(colorful), PixelFormat::RGBA);
    EXPECT_EQ(canvas.picture(), colorful);
    canvas.draw(lower, colors, indices);
    const ImageRef plain = canvas.picture();
    EXPECT_EQ(formatOf(plain), PixelFormat::Indexed);
    // The canvas itself changes only now.
    EXPECT_EQ(canvas.picture(), plain);
    EXPECT_EQ(plain->impl().palette->count, 256U);
  }
}

TEST(GifCanvas, ReusesTheImageWhileNothingChanges) {
  std::mt19937 random(4);
  Canvas canvas(width, height);
  Drawing drawing = randomDrawing(random, 5000);
  drawing.image.transparentIndex.reset();
  canvas.draw(drawing.image, drawing.colors, drawing.indices);
  const ImageRef first = canvas.picture();
  canvas.draw(drawing.image, drawing.colors, drawing.indices);
  EXPECT_EQ(canvas.picture(), first);
  drawing.image.left = drawing.image.top = 0;
  drawing.colors.front() = {1, 2, 3};
  drawing.indices.front() = 0;
  canvas.draw(drawing.image, drawing.colors, drawing.indices);
  EXPECT_NE(canvas.picture(), first);
}

}  // namespace
