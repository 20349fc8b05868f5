// A decoded image on this backend, stored in strips of rows. Successive images share their equal
// strips, so that the unchanged parts of an animation are not copied, compressed, decompressed or
// drawn again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "platform/image.h"
#include "platform/linux/files/file_identity.h"

namespace platform::backend {

// Images with more pixels are not decoded (8K television has 33.2 million).
constexpr std::int64_t maxPixels = std::int64_t{1} << 25;

// Cairo cannot draw images with longer sides, because its coordinates have 16 bits.
constexpr std::int64_t maxSideLength = 32767;

constexpr bool isOfUsableSize(std::int64_t width, std::int64_t height) {
  return width > 0 && width <= maxSideLength && height > 0 && height <= maxSideLength &&
         width * height <= maxPixels;
}

// Indexed: one byte per pixel, an index into the palette. RGBA: four bytes per pixel, with straight
// (not premultiplied) alpha.
enum class PixelFormat : std::size_t { Indexed = 1, RGBA = 4 };

constexpr std::size_t bytesPerPixel(PixelFormat format) {
  return static_cast<std::size_t>(format);
}

using RGBAColor = std::array<std::uint8_t, 4>;
constexpr std::size_t maxColors = 256;

// Colors with straight alpha; if alpha is 0, so are the other channels. The first count colors are
// used; the others can be indexed, too.
struct Palette {
  std::array<RGBAColor, maxColors> colors{};
  std::size_t count = 0;
  friend bool operator==(const Palette&, const Palette&) = default;
};

// The format of a row's pixels in a PNG.
enum class RowCoding { Indexed1, Indexed2, Indexed4, Indexed8, RGB, RGBA };

// Rows as a PNG stores them: coded, filtered, and compressed to raw deflate that ends at a byte
// boundary and has no final block.
struct CompressedRows {
  RowCoding coding = RowCoding::Indexed8;
  Bytes deflated;
  // The checksum and the number of the bytes before compression.
  std::uint32_t adler = 1;
  std::size_t length = 0;
};

// Consecutive rows of an image. A byte that is 0 precedes each row, as in a PNG, so that a strip of
// indices can be compressed as it is.
class Strip {
 public:
  // Leaves the pixels uninitialized; only the bytes before the rows are set. rowLength is in bytes.
  // Throws std::bad_alloc.
  Strip(std::size_t rowLength, int rowCount);

  std::size_t rowLength() const { return rowLength_; }
  int rowCount() const { return rowCount_; }
  std::uint8_t* row(int index) { return &bytes_[start(index) + 1]; }
  const std::uint8_t* row(int index) const { return &bytes_[start(index) + 1]; }
  // Returns all rows with the bytes before them.
  std::span<std::uint8_t> bytes() { return {bytes_.get(), size()}; }
  std::span<const std::uint8_t> bytes() const { return {bytes_.get(), size()}; }

  // The compressed form of the strip, kept once it has been computed; nullptr before. Any thread.
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

// The size and format of an image, and how its rows are divided into strips.
struct PictureShape {
  int width = 0;
  int height = 0;
  PixelFormat format = PixelFormat::Indexed;

  // Returns the number of bytes in a row.
  std::size_t rowLength() const { return static_cast<std::size_t>(width) * bytesPerPixel(format); }
  // Returns the number of rows in each strip but the last, which may have fewer.
  int rowsPerStrip() const;
  int stripCount() const;
  int rowsInStrip(int index) const;
  // Returns a new strip for this index. Throws std::bad_alloc.
  std::shared_ptr<Strip> makeStrip(int index) const;

  friend bool operator==(const PictureShape&, const PictureShape&) = default;
};

using Strips = std::vector<std::shared_ptr<const Strip>>;

}  // namespace platform::backend

namespace platform {

struct UIImage::Impl {
  backend::PictureShape shape;
  // Only in a decoded picture; see pictureOf.
  std::shared_ptr<const backend::Palette> palette;
  backend::Strips strips;

  // The file that contains the image, if it is recognizable.
  std::optional<backend::FileIdentity> file;
  // Decodes the picture when it is needed; empty if it is decoded. Returns nullptr if it fails.
  std::function<ImageRef()> decode;

  // The PNG made from this image, kept so that equal frames share a file (files/written_file.h).
  mutable std::mutex mutex;
  mutable DataRef png;
  // What decode has returned, or a transparent image.
  mutable ImageRef decoded;

  const std::uint8_t* row(int y) const;
};

}  // namespace platform

namespace platform::backend {

// Returns the image's picture, decoded. Several threads may call it for one image.
const UIImage::Impl& pictureOf(const UIImage& image);

// Returns an image of this shape that is decoded when it is needed, which may fail: then it is
// transparent.
ImageRef imageOfFile(const PictureShape& shape, const std::optional<FileIdentity>& file,
                     std::function<ImageRef()> decode);

// Returns an image of these strips. palette is nullptr unless the format is Indexed. Throws
// std::bad_alloc.
ImageRef makeImage(const PictureShape& shape, std::shared_ptr<const Palette> palette,
                   Strips strips);

// Convert from and to bytes of straight RGBA, row by row from the top, without padding. Throw
// std::bad_alloc.
ImageRef imageFromPixels(int width, int height, const Bytes& pixels);
Bytes pixelsOf(const UIImage& image);

}  // namespace platform::backend
