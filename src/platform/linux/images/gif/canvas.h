// The surface that a GIF's images are drawn on. It holds indices as long as 256 colors suffice: a
// quarter of the bytes to move, and the form of a palette PNG. It starts transparent. One thread at
// a time; everything that needs memory throws std::bad_alloc and then leaves a half-drawn canvas.
#pragma once

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

  // Draws an image's rectangle, clipped to the canvas. indices: whole rows in the order of the
  // file; rows that are missing at the end are not drawn. An index without a color shows nothing,
  // as a transparent one.
  void draw(const SubImage& image, const ColorTable& colors, std::span<const std::uint8_t> indices);
  // Makes the image's rectangle transparent.
  void clear(const SubImage& image);

  // Returns what is on the canvas now: the same object as last time if nothing looks different.
  ImageRef picture();

  // A copy of what is on the canvas; it costs no pixels.
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
  void dropUnusedColors();
  void becomeRGBA();
  void drawIndices(const SubImage& image, const IndexMapping& mapping,
                   std::span<const std::uint8_t> indices);
  void drawColors(const SubImage& image, const ColorTable& colors,
                  std::span<const std::uint8_t> indices);
  std::uint8_t* writableRow(int y);
  bool looksLikeLast() const;

  PictureShape shape_;
  Palette palette_;
  Strips strips_;
  // Those of the strips that nobody else has yet, by their index.
  std::vector<std::shared_ptr<Strip>> own_;
  bool isBlank_ = true;
  ImageRef last_;
};

}  // namespace platform::backend::gif
