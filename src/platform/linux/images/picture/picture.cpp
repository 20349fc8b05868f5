#include "platform/linux/images/picture/picture.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform::backend {

Strip::Strip(std::size_t rowLength, int rowCount)
    : rowLength_(rowLength), rowCount_(rowCount), bytes_(new std::uint8_t[size()]) {
  for (int index = 0; index < rowCount; ++index) bytes_[start(index)] = 0;
}

std::shared_ptr<const CompressedRows> Strip::compressed() const {
  std::lock_guard lock(mutex_);
  return compressed_;
}

void Strip::setCompressed(std::shared_ptr<const CompressedRows> rows) const {
  std::lock_guard lock(mutex_);
  compressed_ = std::move(rows);
}

// minStripSize is in pixels, whatever their format. With small strips a small change affects less
// of the image; large strips compress better.
int PictureShape::rowsPerStrip() const {
  constexpr int minStripSize = 1 << 16;
  constexpr int maxStrips = 32;
  const int enough = (minStripSize + width - 1) / width;
  return std::max(enough, (height + maxStrips - 1) / maxStrips);
}

int PictureShape::stripCount() const {
  return (height + rowsPerStrip() - 1) / rowsPerStrip();
}

int PictureShape::rowsInStrip(int index) const {
  return std::min(rowsPerStrip(), height - index * rowsPerStrip());
}

std::shared_ptr<Strip> PictureShape::makeStrip(int index) const {
  return std::make_shared<Strip>(rowLength(), rowsInStrip(index));
}

ImageRef makeImage(const PictureShape& shape, std::shared_ptr<const Palette> palette,
                   Strips strips) {
  auto impl = std::make_unique<UIImage::Impl>();
  impl->shape = shape;
  impl->palette = std::move(palette);
  impl->strips = std::move(strips);
  return std::make_shared<UIImage>(std::move(impl));
}

namespace {

ImageRef transparentImage(const PictureShape& shape) {
  Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    std::ranges::fill(strip->bytes(), std::uint8_t{0});
    strips.push_back(std::move(strip));
  }
  const bool isIndexed = shape.format == PixelFormat::Indexed;
  return makeImage(shape,
                   isIndexed ? std::make_shared<const Palette>(Palette{.count = 1}) : nullptr,
                   std::move(strips));
}

}  // namespace

const UIImage::Impl& pictureOf(const UIImage& image) {
  const UIImage::Impl& impl = image.impl();
  if (!impl.decode) return impl;
  std::lock_guard lock(impl.mutex);
  if (!impl.decoded) impl.decoded = impl.decode();
  if (!impl.decoded) impl.decoded = transparentImage(impl.shape);
  return impl.decoded->impl();
}

ImageRef imageOfFile(const PictureShape& shape, const std::optional<FileIdentity>& file,
                     std::function<ImageRef()> decode) {
  auto impl = std::make_unique<UIImage::Impl>();
  impl->shape = shape;
  impl->file = file;
  impl->decode = std::move(decode);
  return std::make_shared<UIImage>(std::move(impl));
}

ImageRef imageFromPixels(int width, int height, const Bytes& pixels) {
  const PictureShape shape{width, height, PixelFormat::RGBA};
  const std::uint8_t* source = pixels.data();
  Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    for (int row = 0; row < strip->rowCount(); ++row, source += shape.rowLength()) {
      std::memcpy(strip->row(row), source, shape.rowLength());
    }
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, nullptr, std::move(strips));
}

Bytes pixelsOf(const UIImage& image) {
  const UIImage::Impl& picture = pictureOf(image);
  const auto width = static_cast<std::size_t>(picture.shape.width);
  Bytes pixels(width * static_cast<std::size_t>(picture.shape.height) * sizeof(RGBAColor));
  std::uint8_t* target = pixels.data();
  for (int y = 0; y < picture.shape.height; ++y) {
    const std::uint8_t* source = picture.row(y);
    if (picture.shape.format == PixelFormat::RGBA) {
      std::memcpy(target, source, width * sizeof(RGBAColor));
      target += width * sizeof(RGBAColor);
      continue;
    }
    for (std::size_t x = 0; x < width; ++x, target += sizeof(RGBAColor)) {
      std::memcpy(target, picture.palette->colors[source[x]].data(), sizeof(RGBAColor));
    }
  }
  return pixels;
}

}  // namespace platform::backend
