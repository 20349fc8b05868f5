#pragma once

#include <cstdint>
#include <vector>

// One 0xRRGGBB a pixel, row by row.
using Picture = std::vector<std::uint32_t>;

struct LoopFormat {
  int width;
  int height;
  int delay_centiseconds;  // How long each frame shows.
};

// Writes frames of one size as a GIF that loops for ever, in one palette made for all of them.
// Each frame after the first holds only what changed. Throws std::runtime_error on failure.
void writeLoopGif(const char* path, const LoopFormat& format, const std::vector<Picture>& frames);
