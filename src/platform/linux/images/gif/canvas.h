// The surface that a GIF's images are drawn on. It holds indices as long as 256 colours suffice: a
// quarter of the bytes to move, and what a palette PNG wants. It starts transparent.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {

class Canvas {
 public:
  Canvas(int width, int height);

  // Draws an image's rectangle, clipped to the canvas. indices: whole rows in the order of the
  // file; rows that are missing at the end are not drawn. An index without a colour shows nothing,
  // as a transparent one.
  void draw(const Image& image, const ColorTable& colors, std::span<const std::uint8_t> indices);
  // Makes the image's rectangle transparent.
  void clear(const Image& image);

  // What is on the canvas now; the object given last time if nothing looks different.
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
  // What becomes of an image's indices on the canvas.
  struct Mapping {
    std::array<std::uint8_t, maxColors> to{};
    std::array<bool, maxColors> shows{};
  };
  using Indices = std::array<bool, maxColors>;

  void makeBlank();
  bool covers(const Image& image) const;
  bool isReplacedBy(const Image& image, std::span<const std::uint8_t> indices) const;
  bool adopt(const Image& image, const ColorTable& colors, std::span<const std::uint8_t> indices);
  std::optional<Mapping> map(const Mapping& shown, const ColorTable& colors);
  std::optional<Mapping> mapSomehow(const Image& image, const ColorTable& colors,
                                    std::span<const std::uint8_t> indices);
  std::optional<std::uint8_t> indexOf(RGBAColor color);
  void dropUnusedColors();
  void becomeRGBA();
  void drawIndices(const Image& image, const Mapping& mapping,
                   std::span<const std::uint8_t> indices);
  void drawColors(const Image& image, const ColorTable& colors,
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
