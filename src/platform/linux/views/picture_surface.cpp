#include "platform/linux/views/picture_surface.h"

#include <algorithm>
#include <new>

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

}  // namespace

void PictureSurface::update(const UIImage& image) {
  const UIImage::Impl& picture = pictureOf(image);
  if (!fits(picture.shape)) start(picture.shape);
  if (!pixels_) return;
  if (palette_ != picture.palette) setPalette(picture.palette);
  shape_ = picture.shape;
  convertChangedStrips(picture);
}

void PictureSurface::start(const PictureShape& shape) {
  const auto width = static_cast<std::size_t>(shape.width);
  opaque_.reset();
  translucent_.reset();
  pixels_.reset(new (std::nothrow) std::uint32_t[width * static_cast<std::size_t>(shape.height)]);
  const auto surfaceOf = [&](cairo_format_t format) {
    return Surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels_.get()), format, shape.width, shape.height,
        static_cast<int>(width * sizeof(std::uint32_t))));
  };
  if (pixels_) {
    opaque_ = surfaceOf(CAIRO_FORMAT_RGB24);
    translucent_ = surfaceOf(CAIRO_FORMAT_ARGB32);
  }
  shape_ = shape;
  strips_.clear();
  transparentStrips_ = 0;
  changed_ = {0, shape.height};
}

void PictureSurface::setPalette(std::shared_ptr<const Palette> palette) {
  palette_ = std::move(palette);
  strips_.clear();
  transparentStrips_ = 0;
  for (std::size_t index = 0; palette_ && index < maxColors; ++index) {
    colors_[index] = premultipliedPixel(palette_->colors[index].data());
  }
}

bool PictureSurface::fits(const PictureShape& shape) const {
  return pixels_ && shape_.width == shape.width && shape_.height == shape.height;
}

void PictureSurface::convertChangedStrips(const UIImage::Impl& picture) {
  strips_.resize(picture.strips.size());
  for (int index = 0; index < shape_.stripCount(); ++index) {
    auto& shown = strips_[static_cast<std::size_t>(index)];
    const auto& wanted = picture.strips[static_cast<std::size_t>(index)];
    if (shown.strip == wanted) continue;
    shown.strip = wanted;
    const bool isOpaque = convertStrip(picture, index);
    transparentStrips_ += static_cast<int>(shown.isOpaque) - static_cast<int>(isOpaque);
    shown.isOpaque = isOpaque;
    noteChanged(index);
  }
  for (const Surface* surface : {&opaque_, &translucent_}) {
    cairo_surface_mark_dirty(surface->get());
  }
}

bool PictureSurface::convertStrip(const UIImage::Impl& picture, int index) {
  const Strip& strip = *picture.strips[static_cast<std::size_t>(index)];
  std::uint32_t* pixels =
      &pixels_[static_cast<std::size_t>(index) * static_cast<std::size_t>(shape_.rowsPerStrip()) *
               static_cast<std::size_t>(shape_.width)];
  std::uint32_t common = ~std::uint32_t{0};
  for (int row = 0; row < strip.rowCount(); ++row, pixels += shape_.width) {
    const std::uint8_t* source = strip.row(row);
    if (shape_.format == PixelFormat::Indexed) {
      for (int x = 0; x < shape_.width; ++x) common &= pixels[x] = colors_[source[x]];
    } else {
      for (int x = 0; x < shape_.width; ++x, source += 4) {
        common &= pixels[x] = premultipliedPixel(source);
      }
    }
  }
  constexpr std::uint32_t opaqueAlpha = 255;
  return common >> 24 == opaqueAlpha;
}

void PictureSurface::noteChanged(int strip) {
  const int first = strip * shape_.rowsPerStrip();
  const int end = first + shape_.rowsInStrip(strip);
  const bool isFirst = changed_.first == changed_.end;
  changed_ = {isFirst ? first : std::min(changed_.first, first), std::max(changed_.end, end)};
}

}  // namespace platform::backend
