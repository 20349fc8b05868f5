#include "host/displays/screen_transition.h"

#include <numbers>
#include <utility>

#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::UIInterfaceOrientation;
using platform::backend::RunLoop;

// Fast at first, and slower and slower.
double eased(double progress) {
  const double rest = 1 - progress;
  return 1 - rest * rest * rest;
}

// Returns by how many quarters the device is turned to the right.
int quartersOf(UIInterfaceOrientation orientation) {
  switch (orientation) {
    case UIInterfaceOrientation::LandscapeLeft:
      return 1;
    case UIInterfaceOrientation::PortraitUpsideDown:
      return 2;
    case UIInterfaceOrientation::LandscapeRight:
      return 3;
    default:
      return 0;
  }
}

DrawnSurface copyOf(cairo_surface_t* surface) {
  DrawnSurface copy(cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                               cairo_image_surface_get_width(surface),
                                               cairo_image_surface_get_height(surface)));
  const DrawingContext context(cairo_create(copy.get()));
  cairo_set_source_surface(context.get(), surface, 0, 0);
  cairo_paint(context.get());
  return copy;
}

// Makes the context's coordinates those of a picture that fills the target, turned to the right.
void fit(cairo_t* context, cairo_surface_t* picture, cairo_surface_t* target, int quarters) {
  const double width = cairo_image_surface_get_width(picture);
  const double height = cairo_image_surface_get_height(picture);
  const double targetWidth = cairo_image_surface_get_width(target);
  const double targetHeight = cairo_image_surface_get_height(target);
  const bool isSideways = quarters % 2 != 0;
  cairo_translate(context, targetWidth / 2, targetHeight / 2);
  cairo_scale(context, targetWidth / (isSideways ? height : width),
              targetHeight / (isSideways ? width : height));
  cairo_rotate(context, quarters * std::numbers::pi / 2);
  cairo_translate(context, -width / 2, -height / 2);
}

}  // namespace

ScreenTransition::Kind ScreenTransition::kindOf(const Scene& from, const Scene& to) {
  if (from.orientation != to.orientation) return Kind::Turn;
  if (from.state == ScreenState::Home && to.state == ScreenState::App) return Kind::Open;
  const bool isLeft = from.state == ScreenState::App || from.state == ScreenState::Locked;
  return isLeft && to.state == ScreenState::Home ? Kind::Close : Kind::Fade;
}

void ScreenTransition::show(const Scene& scene, cairo_surface_t* shown) {
  const auto before = std::exchange(scene_, scene);
  if (!before || *before == scene || !(duration_ > Duration::zero())) return;
  kind_ = kindOf(*before, scene);
  quarters_ = (quartersOf(scene.orientation) - quartersOf(before->orientation) + 4) % 4;
  if (shown == nullptr) return stop();
  start(shown);
}

void ScreenTransition::start(cairo_surface_t* shown) {
  last_ = copyOf(shown);
  start_ = Clock::now();
  if (link_) return;
  link_ = platform::CADisplayLink::displayLinkWithTarget(
      [](const platform::CADisplayLink&) { RunLoop::main().setNeedsPartialDisplay(); });
  link_->addToMainRunLoop();
}

void ScreenTransition::stop() {
  last_.reset();
  if (link_) link_->invalidate();
  link_.reset();
}

void ScreenTransition::jumpTo(const Scene& scene) {
  scene_ = scene;
  stop();
}

void ScreenTransition::compose(cairo_surface_t* drawn) {
  if (!isRunning()) return;
  const double progress = Duration(Clock::now() - start_) / duration_;
  if (progress >= 1) return stop();
  const DrawingContext context(cairo_create(drawn));
  drawLast(context.get(), drawn, progress);
  cairo_surface_flush(drawn);
}

void ScreenTransition::drawLast(cairo_t* context, cairo_surface_t* drawn, double progress) const {
  const double moved = cairo_image_surface_get_height(drawn) * eased(progress);
  if (kind_ == Kind::Open) {
    // The new picture rises in front of the last one.
    const DrawnSurface rising = copyOf(drawn);
    fit(context, last_.get(), drawn, 0);
    cairo_set_source_surface(context, last_.get(), 0, 0);
    cairo_paint(context);
    cairo_identity_matrix(context);
    cairo_set_source_surface(context, rising.get(), 0,
                             cairo_image_surface_get_height(drawn) - moved);
    cairo_paint(context);
    return;
  }
  if (kind_ == Kind::Close) cairo_translate(context, 0, -moved);
  fit(context, last_.get(), drawn, quarters_);
  cairo_set_source_surface(context, last_.get(), 0, 0);
  cairo_paint_with_alpha(context, kind_ == Kind::Close ? 1 : 1 - eased(progress));
}

}  // namespace host
