#include "platform/linux/views/frame_replay.h"

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
  if (!isNew) return last && kept_.has(*last) ? kept_.difference(*last, *frame_) : kept_.all();
  Region changed = decode();
  if (!wasDecoded) changed = kept_.all();
  if (last) before_ = {*last, changed};
  return changed;
}

void FrameReplay::draw(cairo_surface_t* surface, const Region& part,
                       const std::function<void()>& drawNew) {
  if (isKept() && kept_.fits(surface)) {
    kept_.draw(*frame_, surface, part);
    return;
  }
  drawNew();
  if (frame_) kept_.keep(*frame_, surface, before_);
}

}  // namespace platform::backend
