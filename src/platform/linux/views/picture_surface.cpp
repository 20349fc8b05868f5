#include "platform/linux/views/picture_surface.h"

#include <algorithm>

#include "platform/linux/images/picture/pixels.h"

namespace platform::backend {
namespace {

std::uint32_t premultipliedPixel(const std::uint8_t* rgba) {
  const std::uint8_t alpha = rgba[3];
  auto shifted = [alpha](std::uint8_t value, int bits) {
    return std::uint32_t{premultiplied(value, alpha)} << bits;
  };
  return std::uint32_t{alpha} << 24 | shifted(rgba[0], 16) | shifted(rgba[1], 8) |
         shifted(rgba[2], 0);
}

// Returns true if the image has a palette with opaque colors only. The pixels of an image without a
// palette are not examined.
bool hasOpaquePalette(const UIImage::Impl& picture) {
  if (!picture.palette) return false;
  return isOpaque(picture.palette->colors.front().data(), picture.palette->count);
}

}  // namespace

void PictureSurface::update(const UIImage& image) {
  const UIImage::Impl& picture = pictureOf(image);
  const bool hasNewPalette = palette_ != picture.palette;
  const bool isOpaque = hasNewPalette ? hasOpaquePalette(picture) : isOpaque_;
  if (!fits(picture.shape) || isOpaque != isOpaque_) start(picture.shape, isOpaque);
  if (!surface_) return;
  if (hasNewPalette) setPalette(picture.palette);
  shape_ = picture.shape;
  convertChangedStrips(picture);
}

// Cairo scales images without alpha faster.
void PictureSurface::start(const PictureShape& shape, bool isOpaque) {
  const cairo_format_t format = isOpaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
  surface_.reset(cairo_image_surface_create(format, shape.width, shape.height));
  isOpaque_ = isOpaque;
  if (cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS) surface_.reset();
  shape_ = shape;
  strips_.clear();
  changed_ = {0, shape.height};
}

void PictureSurface::setPalette(std::shared_ptr<const Palette> palette) {
  palette_ = std::move(palette);
  strips_.clear();
  for (std::size_t index = 0; palette_ && index < maxColors; ++index) {
    colors_[index] = premultipliedPixel(palette_->colors[index].data());
  }
}

bool PictureSurface::fits(const PictureShape& shape) const {
  return surface_ && shape_.width == shape.width && shape_.height == shape.height;
}

void PictureSurface::convertChangedStrips(const UIImage::Impl& picture) {
  strips_.resize(picture.strips.size());
  cairo_surface_flush(surface_.get());
  for (int index = 0; index < shape_.stripCount(); ++index) {
    auto& shown = strips_[static_cast<std::size_t>(index)];
    const auto& wanted = picture.strips[static_cast<std::size_t>(index)];
    if (shown == wanted) continue;
    shown = wanted;
    convertStrip(picture, index);
    noteChanged(index);
  }
  cairo_surface_mark_dirty(surface_.get());
}

void PictureSurface::convertStrip(const UIImage::Impl& picture, int index) {
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

void PictureSurface::noteChanged(int strip) {
  const int first = strip * shape_.rowsPerStrip();
  const int end = first + shape_.rowsInStrip(strip);
  const bool isFirst = changed_.first == changed_.end;
  changed_ = {isFirst ? first : std::min(changed_.first, first), std::max(changed_.end, end)};
}

}  // namespace platform::backend
