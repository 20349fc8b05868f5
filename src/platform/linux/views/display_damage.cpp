#include "platform/linux/views/display_damage.h"

#include <algorithm>

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

// Returns the part of the view that shows these rows of its image, with a margin: scaling mixes
// neighboring pixels, of the image or of the screen, whichever are larger.
CGRect partShowing(PictureSurface::Rows rows, const UIImage& image, const UIImageView& view,
                   const CGRect& frame) {
  if (rows.first == 0 && rows.end == image.height()) return frame;
  const CGRect picture = placementOfPicture(image, {frame.width, frame.height}, view.contentMode());
  const CGFloat scale = picture.height / image.height();
  const CGFloat margin = 2 * std::max(scale, CGFloat{1}) + 1;
  const CGFloat top = std::max(picture.y + rows.first * scale - margin, CGFloat{0});
  const CGFloat bottom = std::min(picture.y + rows.end * scale + margin, frame.height);
  return {frame.x, frame.y + top, frame.width, std::max(bottom - top, CGFloat{0})};
}

CGRect unionOf(const CGRect& one, const CGRect& other) {
  const CGFloat left = std::min(one.x, other.x);
  const CGFloat top = std::min(one.y, other.y);
  return {left, top, std::max(one.x + one.width, other.x + other.width) - left,
          std::max(one.y + one.height, other.y + other.height) - top};
}

}  // namespace

std::optional<CGRect> takePictureDamage(const UIView& root) {
  std::optional<CGRect> damage;
  for (const auto& view : takeViewsWithNewPicture()) {
    const auto frame = visibleFrame(*view, root);
    const ImageRef image = frame ? view->image() : nullptr;
    if (!image) continue;
    view->impl().surface.update(*image);
    const PictureSurface::Rows rows = view->impl().surface.takeChangedRows();
    if (rows.first == rows.end) continue;
    // A view that does not clip may draw anywhere.
    const CGRect part =
        view->clipsToBounds() ? partShowing(rows, *image, *view, *frame) : root.frame();
    damage = damage ? unionOf(*damage, part) : part;
  }
  return damage;
}

}  // namespace platform::backend
