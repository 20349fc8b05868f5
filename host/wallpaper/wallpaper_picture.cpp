#include "host/wallpaper/wallpaper_picture.h"

#include <utility>

#include "platform/linux/views/drawn_view.h"
#include "platform/linux/views/image_view.h"

namespace host {
namespace {

using platform::UIImageView;
using platform::UIView;

// The wallpapers that can be seen in a tree. The host draws its own, behind the animated ones.
struct Visible {
  bool hasWallpaper = false;
  // The last one, which is in front of the others.
  UIImageView* imageView = nullptr;
  double alpha = 1;
};

void look(UIView& view, double alpha, Visible& visible) {
  alpha *= view.alpha();
  if (view.hidden() || !(alpha > 0)) return;
  if (dynamic_cast<platform::backend::DrawnView*>(&view) != nullptr) visible.hasWallpaper = true;
  if (auto* imageView = dynamic_cast<UIImageView*>(&view)) {
    visible.imageView = imageView;
    visible.alpha = alpha;
  }
  for (const auto& subview : view.subviews()) look(*subview, alpha, visible);
}

}  // namespace

void WallpaperPicture::look(UIView& root, unsigned wallpaper) {
  Visible visible;
  host::look(root, 1, visible);
  isAwaited_ = false;
  if (!visible.hasWallpaper) {
    isAwaited_ = !hasImage_;
    isStale_ = isStale_ || wallpaper != wallpaper_;
    return;
  }
  if (std::exchange(wallpaper_, wallpaper) != wallpaper) hadGap_ = true;
  if (visible.imageView == nullptr) return takeNothing();
  const auto image = visible.imageView->image();
  if (!image) {
    hadGap_ = true;
    isAwaited_ = !hasImage_;
    return;
  }
  return take(image, visible.imageView->contentMode(), visible.alpha);
}

void WallpaperPicture::takeNothing() {
  hadGap_ = true;
  image_ = nullptr;
  if (!std::exchange(hasImage_, false)) return;
  ++generation_;
  ++version_;
}

void WallpaperPicture::take(const platform::ImageRef& image, platform::UIViewContentMode mode,
                            double alpha) {
  const bool isNew = std::exchange(hadGap_, false) || image->width() != width_ ||
                     image->height() != height_ || !hasImage_;
  if (isNew) ++generation_;
  if (isNew || mode != mode_ || alpha != alpha_) ++version_;
  hasImage_ = true;
  width_ = image->width();
  height_ = image->height();
  mode_ = mode;
  alpha_ = alpha;
  if (std::exchange(image_, image) == image) return;
  isStale_ = false;
  ++number_;
}

const std::optional<platform::backend::FileIdentity>& WallpaperPicture::file() const {
  static const std::optional<platform::backend::FileIdentity> none;
  return hasImage_ ? image_->impl().file : none;
}

void WallpaperPicture::decode() const {
  if (!hasImage_ || decoded_ == number_) return;
  surface_.update(*image_);
  changed_ = surface_.takeChanged();
  decodedBefore_ = std::exchange(decoded_, number_);
}

cairo_surface_t* WallpaperPicture::surface() const {
  decode();
  return hasImage_ ? surface_.surface() : nullptr;
}

const platform::backend::PictureSurface& WallpaperPicture::pixels() const {
  decode();
  return surface_;
}

bool WallpaperPicture::isOpaque() const {
  decode();
  return surface_.isOpaque() && alpha_ >= 1;
}

std::optional<platform::backend::Region> WallpaperPicture::changedSince(
    unsigned frameNumber) const {
  decode();
  return decodedBefore_ == frameNumber ? std::optional(changed_) : std::nullopt;
}

void WallpaperPicture::forgetPixels() {
  surface_ = {};
  decoded_ = 0;
}

}  // namespace host
