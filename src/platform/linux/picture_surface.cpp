#include "platform/linux/picture_surface.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {
namespace {

std::uint32_t premultipliedPixel(const std::uint8_t* rgba) {
  const std::uint32_t alpha = rgba[3];
  auto scaled = [alpha](std::uint32_t value) { return (value * alpha + 127) / 255; };
  return alpha << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

}  // namespace

PictureSurface::Rows PictureSurface::update(const UIImage& image) {
  const UIImage::Impl& picture = image.impl();
  const Rows all{0, picture.shape.height};
  if (!fits(picture.shape)) {
    surface_.reset(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.shape.width, picture.shape.height));
    if (cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS) surface_.reset();
    strips_.clear();
    if (!surface_) return all;
  }
  shape_ = picture.shape;
  if (palette_ != picture.palette) {
    palette_ = picture.palette;
    strips_.clear();
    for (std::size_t index = 0; palette_ && index < mostColors; ++index) {
      colors_[index] = premultipliedPixel(palette_->colors[index].data());
    }
  }
  Rows changed{picture.shape.height, 0};
  strips_.resize(picture.strips.size());
  cairo_surface_flush(surface_.get());
  for (int index = 0; index < shape_.stripCount(); ++index) {
    auto& shown = strips_[static_cast<std::size_t>(index)];
    const auto& wanted = picture.strips[static_cast<std::size_t>(index)];
    if (shown == wanted) continue;
    shown = wanted;
    lookUp(picture, index);
    const int first = index * shape_.rowsPerStrip();
    changed.first = std::min(changed.first, first);
    changed.end = first + shape_.rowsInStrip(index);
  }
  cairo_surface_mark_dirty(surface_.get());
  return changed.end == 0 ? Rows{} : changed;
}

bool PictureSurface::fits(const PictureShape& shape) const {
  return surface_ && shape_.width == shape.width && shape_.height == shape.height;
}

void PictureSurface::lookUp(const UIImage::Impl& picture, int index) {
  const Strip& strip = *picture.strips[static_cast<std::size_t>(index)];
  const int stride = cairo_image_surface_get_stride(surface_.get());
  unsigned char* target = cairo_image_surface_get_data(surface_.get()) +
                          static_cast<std::ptrdiff_t>(index) * shape_.rowsPerStrip() * stride;
  for (int row = 0; row < strip.rowCount(); ++row, target += stride) {
    auto* pixels = reinterpret_cast<std::uint32_t*>(target);
    const std::uint8_t* source = strip.row(row);
    if (shape_.format == PixelFormat::Indexed) {
      for (int x = 0; x < shape_.width; ++x) pixels[x] = colors_[source[x]];
    } else {
      for (int x = 0; x < shape_.width; ++x, source += 4) pixels[x] = premultipliedPixel(source);
    }
  }
}

Bytes PictureSurface::pixels() const {
  const std::size_t rowLength = static_cast<std::size_t>(shape_.width) * 4;
  Bytes bytes(rowLength * static_cast<std::size_t>(shape_.height));
  const unsigned char* row = cairo_image_surface_get_data(surface_.get());
  for (int y = 0; y < shape_.height; ++y) {
    std::memcpy(&bytes[static_cast<std::size_t>(y) * rowLength], row, rowLength);
    row += cairo_image_surface_get_stride(surface_.get());
  }
  return bytes;
}

}  // namespace platform
