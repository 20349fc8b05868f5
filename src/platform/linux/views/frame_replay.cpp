#include "platform/linux/views/frame_replay.h"

#include <new>
#include <utility>

namespace platform::backend {

void FrameReplay::restart(const std::optional<FileIdentity>& frame) {
  kept_.clear();
  frame_ = frame;
  before_.reset();
  isDecoded_ = true;
}

Region FrameReplay::next(const std::optional<FileIdentity>& frame,
                         const std::function<Region()>& decode) {
  const auto last = std::exchange(frame_, frame);
  before_.reset();
  const bool isNew = !isKept();
  const bool wasDecoded = std::exchange(isDecoded_, isNew);
  if (!isNew) return last && kept_.has(*last) ? kept_.difference(*last, *frame_) : all_;
  Region changed = decode();
  if (!wasDecoded) changed = all_;
  if (last) before_ = {*last, changed};
  return changed;
}

void FrameReplay::draw(cairo_surface_t* surface, const Region& part,
                       const std::function<void(const Region&)>& drawNew) {
  all_ = Region(
      {0, 0, cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)});
  try {
    if (isKept() && kept_.fits(surface)) {
      drawKept(surface, part, drawNew);
      return;
    }
    drawNew(part);
    if (frame_) kept_.keep(*frame_, surface, before_);
  } catch (const std::bad_alloc&) {
    // The surface may show anything now.
    restart(std::nullopt);
    isDecoded_ = false;
    throw;
  }
}

void FrameReplay::drawKept(cairo_surface_t* surface, const Region& part,
                           const std::function<void(const Region&)>& drawNew) {
  kept_.draw(*frame_, surface, part);
  const Region forgotten = kept_.forgotten(*frame_, part);
  if (forgotten.isEmpty()) return;
  drawNew(forgotten);
  kept_.keepForgotten(*frame_, surface, forgotten);
}

}  // namespace platform::backend
