#include "platform/linux/views/view_renderer.h"

#include <algorithm>
#include <cmath>

#include "platform/linux/views/drawn_view.h"
#include "platform/linux/views/image_view.h"
#include "platform/linux/views/picture_placement.h"

namespace platform::backend {
namespace {

// Draws a tree, without what an opaque image hides, so that an animation does not redraw the views
// behind it for each of its frames.
class Renderer {
 public:
  explicit Renderer(cairo_t* context) : context_(context) {}

  void draw(UIView& root) {
    double x = 0;
    double y = 0;
    cairo_user_to_device(context_, &x, &y);
    cairo_user_to_device_distance(context_, &scaleX_, &scaleY_);
    findCover(root, x, y);
    drawView(root);
  }

 private:
  static bool isVisible(const UIView& view) {
    const CGRect frame = view.frame();
    return !view.hidden() && view.alpha() > 0 && frame.width > 0 && frame.height > 0;
  }

  // Finds the last opaque image in the tree and the whole pixels that it fills. (x, y) is the
  // superview's corner on the surface.
  void findCover(UIView& view, double x, double y) {
    if (!isVisible(view) || view.alpha() < 1) return;
    const CGRect frame = view.frame();
    x += frame.x * scaleX_;
    y += frame.y * scaleY_;
    if (auto* imageView = dynamic_cast<UIImageView*>(&view)) noteIfOpaque(*imageView, x, y);
    for (const auto& subview : view.subviews()) findCover(*subview, x, y);
  }

  void noteIfOpaque(UIImageView& view, double x, double y) {
    const ImageRef image = view.image();
    if (!image) return;
    PictureSurface& surface = view.impl().surface;
    surface.update(*image);
    if (surface.surface() == nullptr || !surface.isOpaque()) return;
    const CGRect frame = view.frame();
    const CGRect at = placementOfPicture(*image, {frame.width, frame.height}, view.contentMode());
    const double left = std::max<double>(at.x, 0);
    const double top = std::max<double>(at.y, 0);
    const double right = std::min<double>(at.x + at.width, frame.width);
    const double bottom = std::min<double>(at.y + at.height, frame.height);
    cover_ = &view;
    coverLeft_ = std::ceil(x + left * scaleX_);
    coverTop_ = std::ceil(y + top * scaleY_);
    coverRight_ = std::floor(x + right * scaleX_);
    coverBottom_ = std::floor(y + bottom * scaleY_);
  }

  // Clips the area of the cover away until the context is restored.
  void leaveCoverOut() {
    if (cover_ == nullptr || coverRight_ <= coverLeft_ || coverBottom_ <= coverTop_) return;
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    cairo_identity_matrix(context_);
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context_, &left, &top, &right, &bottom);
    cairo_rectangle(context_, left, top, right - left, bottom - top);
    cairo_rectangle(context_, coverLeft_, coverTop_, coverRight_ - coverLeft_,
                    coverBottom_ - coverTop_);
    cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(context_);
    cairo_set_fill_rule(context_, CAIRO_FILL_RULE_WINDING);
    cairo_set_matrix(context_, &matrix);
  }

  void drawView(UIView& view) {
    if (!isVisible(view)) return;
    const CGFloat alpha = view.alpha();
    if (alpha >= 1) {
      drawWithSubviews(view);
      return;
    }
    cairo_push_group(context_);
    drawWithSubviews(view);
    cairo_pop_group_to_source(context_);
    cairo_paint_with_alpha(context_, alpha);
  }

  void drawWithSubviews(UIView& view) {
    const CGRect frame = view.frame();
    cairo_save(context_);
    cairo_translate(context_, frame.x, frame.y);
    if (view.clipsToBounds()) {
      cairo_rectangle(context_, 0, 0, frame.width, frame.height);
      cairo_clip(context_);
    }
    cairo_save(context_);
    drawContent(view, {frame.width, frame.height});
    cairo_restore(context_);
    for (const auto& subview : view.subviews()) drawView(*subview);
    cairo_restore(context_);
  }

  void drawContent(UIView& view, CGSize size) {
    if (&view == cover_) cover_ = nullptr;
    leaveCoverOut();
    const UIColor color = view.backgroundColor();
    if (color.alpha > 0) {
      cairo_set_source_rgba(context_, color.red, color.green, color.blue, color.alpha);
      cairo_rectangle(context_, 0, 0, size.width, size.height);
      cairo_fill(context_);
    }
    if (auto* drawn = dynamic_cast<DrawnView*>(&view)) {
      cairo_rectangle(context_, 0, 0, size.width, size.height);
      cairo_clip(context_);
      drawn->draw(context_, size);
    }
    if (auto* imageView = dynamic_cast<UIImageView*>(&view)) drawImage(*imageView, size);
  }

  void drawImage(UIImageView& view, CGSize size) {
    const ImageRef image = view.image();
    if (!image) return;
    PictureSurface& surface = view.impl().surface;
    surface.update(*image);
    if (surface.surface() == nullptr) return;
    view.impl().drawing.draw(context_, surface,
                             placementOfPicture(*image, size, view.contentMode()));
  }

  cairo_t* const context_;
  double scaleX_ = 1;
  double scaleY_ = 1;
  // The view that hides what is behind it; nullptr once it has been drawn.
  const UIView* cover_ = nullptr;
  double coverLeft_ = 0;
  double coverTop_ = 0;
  double coverRight_ = 0;
  double coverBottom_ = 0;
};

}  // namespace

void renderView(UIView& view, cairo_t* context) {
  Renderer(context).draw(view);
}

}  // namespace platform::backend
