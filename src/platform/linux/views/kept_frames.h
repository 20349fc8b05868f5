// Keeps the frames of an animation as they were drawn, compressed, so that they need not be decoded
// and drawn again when the animation repeats. Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <cairo.h>

#include "platform/linux/files/file_identity.h"
#include "platform/linux/views/region.h"

namespace platform::backend {

class KeptFrames {
 public:
  // budget: how many bytes of memory it may take, up to one tile more. 0 keeps nothing.
  explicit KeptFrames(std::size_t budget) : budget_(budget) {}

  // Forgets all frames. Call it when anything but the image has changed what is drawn.
  void clear();

  // Returns true if the frame is kept.
  bool has(const FileIdentity& frame) const { return frames_.contains(frame); }
  // Returns true if the surface has the size of the kept frames.
  bool fits(cairo_surface_t* surface) const;
  // Forgets these pixels of all frames, and some around them.
  void forget(const Region& part);
  // Returns the pixels of this part of a kept frame that were forgotten, and some around them.
  Region forgotten(const FileIdentity& frame, const Region& part) const;
  // Returns the pixels in which two frames may differ, and some around them. Requires that both are
  // kept.
  Region difference(const FileIdentity& one, const FileIdentity& other) const;

  // Draws at least these pixels of a kept frame, except for forgotten ones, on a surface of the
  // size that was kept, an image of 32-bit pixels. Requires that the frame is kept.
  void draw(const FileIdentity& frame, cairo_surface_t* surface, const Region& part);

  // A kept frame and the pixels in which another one may differ from it.
  struct Before {
    FileIdentity frame;
    Region changed;
  };

  // Keeps the frame that the surface shows, unless it is kept or does not fit into the budget. A
  // surface of another size replaces all frames. before saves work; its frame need not be kept.
  void keep(const FileIdentity& frame, cairo_surface_t* surface,
            const std::optional<Before>& before = std::nullopt);

  // Keeps the forgotten pixels of a kept frame again, as the surface shows them, if the budget
  // allows it.
  void keepForgotten(const FileIdentity& frame, cairo_surface_t* surface, const Region& part);

  // Returns about how many bytes of memory it takes.
  std::size_t size() const { return size_; }

 private:
  // A compressed rectangle of pixels, or nothing if it was forgotten. Frames share equal ones.
  using Tile = std::vector<char>;
  using Tiles = std::vector<std::shared_ptr<const Tile>>;

  void start(cairo_surface_t* surface);
  bool mayKeep(const FileIdentity& frame);
  void drawTile(const Tile& tile, cairo_surface_t* surface, const cairo_rectangle_int_t& pixels);
  std::shared_ptr<const Tile> tileOf(cairo_surface_t* surface, const cairo_rectangle_int_t& pixels);

  const std::size_t budget_;
  std::size_t size_ = 0;
  // Of all surfaces, in pixels.
  int width_ = 0;
  int height_ = 0;
  // The pixels of each tile.
  std::vector<cairo_rectangle_int_t> places_;
  std::map<FileIdentity, Tiles> frames_;
  // All tiles, by a hash of their bytes.
  std::unordered_map<std::size_t, std::shared_ptr<const Tile>> tiles_;
  bool isFull_ = false;
  // How many frames were not kept since a kept one was drawn, and one of them.
  std::uint64_t missedCount_ = 0;
  std::optional<FileIdentity> missed_;
  std::vector<char> pixels_;
  std::vector<char> compressed_;
};

}  // namespace platform::backend
