#include "platform/linux/views/picture_surface.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
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
  pixels_.reset(new (std::nothrow) std::uint32_t[width * static_cast<std::size_t>(shape.height)]());
  const auto surfaceOf = [&](cairo_format_t format) {
    return CairoSurface(cairo_image_surface_create_for_data(
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
  room_.resize(width);
  pending_ = {};
  changed_ = Region({0, 0, shape.width, shape.height});
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
  }
  for (const CairoSurface* surface : {&opaque_, &translucent_}) {
    cairo_surface_mark_dirty(surface->get());
  }
}

bool PictureSurface::convertStrip(const UIImage::Impl& picture, int index) {
  const Strip& strip = *picture.strips[static_cast<std::size_t>(index)];
  const int first = index * shape_.rowsPerStrip();
  std::uint32_t common = ~std::uint32_t{0};
  for (int row = 0; row < strip.rowCount(); ++row) {
    common &= convertRow(strip.row(row));
    takeRow(first + row);
  }
  constexpr std::uint32_t opaqueAlpha = 255;
  return common >> 24 == opaqueAlpha;
}

std::uint32_t PictureSurface::convertRow(const std::uint8_t* row) {
  std::uint32_t common = ~std::uint32_t{0};
  if (shape_.format == PixelFormat::Indexed) {
    for (std::uint32_t& pixel : room_) common &= pixel = colors_[*row++];
  } else {
    for (std::uint32_t& pixel : room_) {
      common &= pixel = premultipliedPixel(row);
      row += bytesPerPixel(shape_.format);
    }
  }
  return common;
}

// Takes the row in room_ if it differs from the one on the surface.
void PictureSurface::takeRow(int row) {
  const std::size_t width = room_.size();
  std::uint32_t* shown = &pixels_[static_cast<std::size_t>(row) * width];
  if (std::memcmp(shown, room_.data(), width * sizeof *shown) == 0) return;
  const auto first = std::mismatch(room_.begin(), room_.end(), shown).first - room_.begin();
  auto end = static_cast<std::ptrdiff_t>(width);
  while (shown[end - 1] == room_[static_cast<std::size_t>(end - 1)]) --end;
  std::copy(room_.begin() + first, room_.begin() + end, shown + first);
  noteChanged({static_cast<int>(first), row, static_cast<int>(end - first), 1});
}

// Rows close to each other form one rectangle, because many small ones take longer to draw.
void PictureSurface::noteChanged(const cairo_rectangle_int_t& part) {
  constexpr int maxGap = 8;
  const int end = pending_.y + pending_.height;
  if (pending_.height == 0) {
    pending_ = part;
    return;
  }
  if (part.y < pending_.y || part.y > end + maxGap) {
    changed_.add(std::exchange(pending_, part));
    return;
  }
  const int left = std::min(pending_.x, part.x);
  const int right = std::max(pending_.x + pending_.width, part.x + part.width);
  pending_ = {left, pending_.y, right - left, part.y + part.height - pending_.y};
}

Region PictureSurface::takeChanged() {
  changed_.add(std::exchange(pending_, {}));
  return std::exchange(changed_, Region());
}

}  // namespace platform::backend
