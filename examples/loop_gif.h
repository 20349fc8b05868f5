// Writes a looping animation as a GIF file.
#pragma once

#include <cstdint>
#include <vector>

// One 0xRRGGBB per pixel, row by row.
using Picture = std::vector<std::uint32_t>;

struct LoopFormat {
  int width;
  int height;
  // The time for which each frame is shown.
  int delayCentiseconds;
};

// Writes frames of one size as a GIF that loops forever and has one palette for all. Each frame
// after the first contains only the changed part. Throws std::runtime_error on failure.
void writeLoopGif(const char* path, const LoopFormat& format, const std::vector<Picture>& frames);
