// Keeps the frames of an animation as they were drawn, compressed, so that they need not be decoded
// and drawn again when the animation repeats. Main thread.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <cairo.h>

#include "platform/linux/files/file_identity.h"
#include "platform/linux/views/picture_surface.h"

namespace platform::backend {

class KeptFrames {
 public:
  using Rows = PictureSurface::Rows;

  // budget: the largest size of all compressed pixels in bytes. 0 keeps nothing.
  explicit KeptFrames(std::size_t budget) : budget_(budget) {}

  // Forgets all frames. Call it when anything but the image has changed what is drawn.
  void clear();

  // Returns true if the frame is kept.
  bool has(const FileIdentity& frame) const { return frames_.contains(frame); }
  // Returns the rows in which two frames differ, and some around them. Requires that both are kept.
  Rows difference(const FileIdentity& one, const FileIdentity& other) const;

  // Draws at least these rows of a kept frame on a surface of the size that was kept, an image of
  // 32-bit pixels. Requires that the frame is kept.
  void draw(const FileIdentity& frame, cairo_surface_t* surface, Rows rows);

  // A kept frame and the rows in which another one may differ from it.
  struct Before {
    FileIdentity frame;
    Rows changed;
  };

  // Keeps the frame that the surface shows, unless it is kept or does not fit into the budget. A
  // surface of another size replaces all frames. before saves work; its frame need not be kept.
  void keep(const FileIdentity& frame, cairo_surface_t* surface,
            const std::optional<Before>& before = std::nullopt);

  // Returns the size of all compressed pixels in bytes.
  std::size_t size() const { return size_; }

 private:
  // Compressed rows. Frames share equal ones.
  using Strip = std::vector<char>;
  using Strips = std::vector<std::shared_ptr<const Strip>>;

  int rowsPerStrip() const;
  Rows rowsOfStrip(std::size_t index) const;
  std::shared_ptr<const Strip> stripOf(cairo_surface_t* surface, Rows rows);

  const std::size_t budget_;
  std::size_t size_ = 0;
  // Of all surfaces, in pixels.
  int width_ = 0;
  int height_ = 0;
  std::map<FileIdentity, Strips> frames_;
  // All strips, by a hash of their bytes.
  std::unordered_map<std::size_t, std::shared_ptr<const Strip>> strips_;
  // True once a frame did not fit.
  bool isFull_ = false;
  // How many frames in a row were not kept since then.
  int missed_ = 0;
  Strip room_;
};

}  // namespace platform::backend
