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
                       const std::function<void()>& drawNew) {
  all_ = Region(
      {0, 0, cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)});
  if (isKept() && kept_.fits(surface)) {
    kept_.draw(*frame_, surface, part);
    return;
  }
  try {
    drawNew();
    if (frame_) kept_.keep(*frame_, surface, before_);
  } catch (const std::bad_alloc&) {
    // The surface may show anything now.
    restart(std::nullopt);
    isDecoded_ = false;
    throw;
  }
}

}  // namespace platform::backend
