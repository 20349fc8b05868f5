#include "platform/linux/views/display_damage.h"

#include <cmath>
#include <optional>

#include "platform/linux/views/image_view.h"
#include "platform/linux/views/picture_placement.h"

namespace platform::backend {
namespace {

// Returns the view's frame in the root's coordinates, or nothing if the view is not in the tree or
// not visible.
std::optional<CGRect> visibleFrame(UIView& view, const UIView& root) {
  CGRect frame = view.frame();
  frame.x = frame.y = 0;
  for (std::shared_ptr<const UIView> at = view.shared_from_this(); at; at = at->superview()) {
    if (at->hidden() || !(at->alpha() > 0)) return std::nullopt;
    if (at.get() == &root) return frame;
    frame.x += at->frame().x;
    frame.y += at->frame().y;
  }
  return std::nullopt;
}

CGRect scaled(const CGRect& rectangle, CGFloat scale) {
  return {rectangle.x * scale, rectangle.y * scale, rectangle.width * scale,
          rectangle.height * scale};
}

// Returns the pixels that may look different in a view with this frame.
Region damageOfView(UIImageView& view, const CGRect& frame, const cairo_rectangle_int_t& screen,
                    CGFloat scale) {
  const ImageRef image = view.image();
  PictureSurface& surface = view.impl().surface;
  surface.update(*image);
  const Region changed = surface.takeChanged();
  const CGRect pixels = scaled(frame, scale);
  // A view that does not clip may draw anywhere.
  Region whole = view.clipsToBounds() ? pixelsOf(pixels, screen) : Region(screen);
  const auto bounds = changed.bounds();
  // The image may have another size than the one before.
  if (bounds.width == image->width() && bounds.height == image->height()) return whole;
  CGRect at =
      scaled(placementOfPicture(*image, {frame.width, frame.height}, view.contentMode()), scale);
  at.x += pixels.x;
  at.y += pixels.y;
  const CGSize size{static_cast<CGFloat>(image->width()), static_cast<CGFloat>(image->height())};
  return pixelsShowing(changed, size, at, whole.bounds());
}

}  // namespace

ImageViews takeChangedViews(const UIView& root) {
  ImageViews views = takeViewsWithNewPicture();
  std::erase_if(views,
                [&root](const auto& view) { return !view->image() || !visibleFrame(*view, root); });
  return views;
}

Region damageOf(const ImageViews& views, const UIView& root, CGFloat scale) {
  const CGRect size = scaled(root.frame(), scale);
  const cairo_rectangle_int_t screen{0, 0, static_cast<int>(std::lround(size.width)),
                                     static_cast<int>(std::lround(size.height))};
  Region damage;
  for (const auto& view : views) {
    const auto frame = visibleFrame(*view, root);
    if (frame && view->image()) damage.add(damageOfView(*view, *frame, screen, scale));
  }
  return damage;
}

}  // namespace platform::backend
