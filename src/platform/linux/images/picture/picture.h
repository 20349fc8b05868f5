// A decoded picture as this backend holds it: in strips of rows, which pictures that follow each
// other share wherever they are equal. So what stands still is neither copied nor compressed,
// decompressed or drawn again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "platform/image.h"

namespace platform::backend {

// More pixels than this, in one picture, are too large to hold (8K television has 33.2 million).
constexpr std::int64_t maxPixels = std::int64_t{1} << 25;

// Cairo draws no picture with a longer side: its coordinates have 16 bits.
constexpr std::int64_t maxSideLength = 32767;

constexpr bool isOfUsableSize(std::int64_t width, std::int64_t height) {
  return width > 0 && width <= maxSideLength && height > 0 && height <= maxSideLength &&
         width * height <= maxPixels;
}

// One byte per pixel, an index into the picture's palette; or straight RGBA, 8 bits each.
enum class PixelFormat : std::size_t { Indexed = 1, RGBA = 4 };

constexpr std::size_t bytesPerPixel(PixelFormat format) {
  return static_cast<std::size_t>(format);
}

using RGBAColor = std::array<std::uint8_t, 4>;
constexpr std::size_t maxColors = 256;

// Straight colors; where alpha is 0, all of it is. Every index has one; those used lie in front.
struct Palette {
  std::array<RGBAColor, maxColors> colors{};
  std::size_t count = 0;
  friend bool operator==(const Palette&, const Palette&) = default;
};

// How the pixels of a row stand in a PNG.
enum class RowCoding { Indexed1, Indexed2, Indexed4, Indexed8, RGB, RGBA };

// Rows as a PNG has them: coded, filtered and compressed, in raw deflate that ends at a byte's
// border without a final block.
struct CompressedRows {
  RowCoding coding = RowCoding::Indexed8;
  Bytes deflated;
  // Of the bytes before they were compressed.
  std::uint32_t adler = 1;
  std::size_t length = 0;
};

// Some rows of a picture. Each has a byte more, in front, which is 0: as PNG has it, so that whole
// strips of indices go through the compressor as they lie.
class Strip {
 public:
  // The contents are left to the caller, but for the bytes in front.
  Strip(std::size_t rowLength, int rowCount);

  std::size_t rowLength() const { return rowLength_; }
  int rowCount() const { return rowCount_; }
  std::uint8_t* row(int index) { return &bytes_[start(index) + 1]; }
  const std::uint8_t* row(int index) const { return &bytes_[start(index) + 1]; }
  // All rows with their bytes in front.
  std::span<std::uint8_t> bytes() { return {bytes_.get(), size()}; }
  std::span<const std::uint8_t> bytes() const { return {bytes_.get(), size()}; }

  std::shared_ptr<const CompressedRows> compressed() const;
  void setCompressed(std::shared_ptr<const CompressedRows> rows) const;

 private:
  std::size_t start(int index) const { return static_cast<std::size_t>(index) * (rowLength_ + 1); }
  std::size_t size() const { return start(rowCount_); }

  const std::size_t rowLength_;
  const int rowCount_;
  std::unique_ptr<std::uint8_t[]> bytes_;
  mutable std::mutex mutex_;
  mutable std::shared_ptr<const CompressedRows> compressed_;
};

struct PictureShape {
  int width = 0;
  int height = 0;
  PixelFormat format = PixelFormat::Indexed;

  std::size_t rowLength() const { return static_cast<std::size_t>(width) * bytesPerPixel(format); }
  // The last strip may be lower.
  int rowsPerStrip() const;
  int stripCount() const;
  int rowsInStrip(int index) const;
  std::shared_ptr<Strip> makeStrip(int index) const;

  friend bool operator==(const PictureShape&, const PictureShape&) = default;
};

using Strips = std::vector<std::shared_ptr<const Strip>>;

}  // namespace platform::backend

namespace platform {

struct UIImage::Impl {
  backend::PictureShape shape;
  std::shared_ptr<const backend::Palette> palette;
  backend::Strips strips;

  // The PNG made of this picture, kept so that equal frames share a file (files/written_file.h).
  mutable std::mutex mutex;
  mutable DataRef png;

  const std::uint8_t* row(int y) const;
};

}  // namespace platform

namespace platform::backend {

ImageRef makeImage(const PictureShape& shape, std::shared_ptr<const Palette> palette,
                   Strips strips);

// From and to straight RGBA, row by row from the top, without padding.
ImageRef imageFromPixels(int width, int height, const Bytes& pixels);
Bytes pixelsOf(const UIImage& image);

}  // namespace platform::backend
