// Draws an animation on a surface that keeps its pixels. Frames that have been drawn before are
// taken from kept ones. Main thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include <cairo.h>

#include "platform/linux/files/file_identity.h"
#include "platform/linux/views/kept_frames.h"

namespace platform::backend {

class FrameReplay {
 public:
  // budget: how many bytes of memory kept frames may take.
  explicit FrameReplay(std::size_t budget) : kept_(budget) {}

  // Forgets all frames. Call it when anything but the frame has changed, also its place or the
  // surface's size. frame: the file of the one that is drawn next, if it is recognizable.
  void restart(const std::optional<FileIdentity>& frame);

  // Forgets these pixels of all frames. Call it when something has changed there in front of or
  // behind the animation.
  void forget(const Region& part) { kept_.forget(part); }

  // Takes the next frame. Returns the pixels of the surface in which it may differ from the frame
  // before. decode decodes the frame and returns the pixels in which it may differ from the one for
  // which it was called before; it is called if the frame is not kept.
  Region next(const std::optional<FileIdentity>& frame, const std::function<Region()>& decode);

  // Draws at least this part of the frame; what is not kept of it, by calling drawNew. Outside of
  // it the surface shows the frame already. Rethrows what drawNew throws; then the next frame is
  // drawn completely.
  void draw(cairo_surface_t* surface, const Region& part,
            const std::function<void(const Region&)>& drawNew);

 private:
  void drawKept(cairo_surface_t* surface, const Region& part,
                const std::function<void(const Region&)>& drawNew);
  bool isKept() const { return frame_ && kept_.has(*frame_); }

  KeptFrames kept_;
  std::optional<FileIdentity> frame_;
  // The frame before, and in which pixels this one differs.
  std::optional<KeptFrames::Before> before_;
  // True if decode returns in what the next frame differs from this one.
  bool isDecoded_ = true;
  // All pixels of the surface that was drawn last.
  Region all_;
};

}  // namespace platform::backend
