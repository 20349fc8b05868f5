// The canvas on which a GIF's images are drawn, transparent at first. It stores indices as long as
// 256 colors are enough: they take a quarter of the memory of RGBA, and a palette PNG stores them,
// too. One thread at a time. All functions may throw std::bad_alloc, which leaves the canvas half
// drawn.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/palette_matcher.h"
#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {

class Canvas {
 public:
  Canvas(int width, int height);

  // Draws an image, clipped to the canvas. indices contains complete rows in the order of the file;
  // rows that are missing at the end are not drawn. An index that has no color is transparent.
  void draw(const SubImage& image, const ColorTable& colors, std::span<const std::uint8_t> indices);
  // Makes the image's rectangle transparent.
  void clear(const SubImage& image);

  // Returns the canvas as an image, which is the same object as last time if nothing looks
  // different.
  ImageRef picture();

  // The contents of a canvas. A copy shares the pixels.
  struct Contents {
    PictureShape shape;
    Palette palette;
    Strips strips;
    bool isBlank;
  };
  Contents save();
  void restore(const Contents& saved);

 private:
  void makeBlank();
  bool covers(const SubImage& image) const;
  bool isReplacedBy(const SubImage& image, std::span<const std::uint8_t> indices) const;
  bool takeOverPalette(const SubImage& image, const ColorTable& colors,
                       std::span<const std::uint8_t> indices);
  std::optional<IndexMapping> mappingFor(const SubImage& image, const ColorTable& colors,
                                         std::span<const std::uint8_t> indices);
  IndexSet indicesOnCanvas() const;
  void dropUnusedColors();
  void improve(IndexMapping& mapping, const SubImage& image, const ColorTable& colors,
               std::span<const std::uint8_t> indices);
  bool renumberLike(const ColorTable& colors, const IndexMapping& mapping);
  // Replaces every index on the canvas.
  void moveIndices(const std::array<std::uint8_t, maxColors>& moved);
  void becomeRGBA();
  void drawIndices(const SubImage& image, const IndexMapping& mapping,
                   std::span<const std::uint8_t> indices);
  void drawColors(const SubImage& image, const ColorTable& colors,
                  std::span<const std::uint8_t> indices);
  std::uint8_t* writableRow(int y);
  ImageRef pictureOfFewColors();
  bool looksLikeLast() const;

  PictureShape shape_;
  Palette palette_;
  Strips strips_;
  // The strips that are not shared with images or saved contents, at their indices; others are
  // nullptr.
  std::vector<std::shared_ptr<Strip>> own_;
  bool isBlank_ = true;
  // True if the last picture had few colors although the canvas is RGBA.
  bool hadFewColors_ = false;
  // The colors of the last image whose indices differed from the canvas's, and the number of pixels
  // of images with these colors.
  ColorTable translatedColors_;
  std::int64_t translatedPixels_ = 0;
  ImageRef last_;
};

}  // namespace platform::backend::gif
