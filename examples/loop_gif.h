// Writes a looping animation as a GIF file.
#pragma once

#include <cstdint>
#include <vector>

// One 0xRRGGBB per pixel, row by row.
using Picture = std::vector<std::uint32_t>;

struct LoopFormat {
  int width;
  int height;
  // How long each frame shows.
  int delayCentiseconds;
};

// Writes frames of one size as a GIF that loops forever, in one palette made for all of them.
// Each frame after the first holds only what changed. Throws std::runtime_error on failure.
void writeLoopGif(const char* path, const LoopFormat& format, const std::vector<Picture>& frames);
