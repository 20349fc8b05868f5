// The first frames of a GIF in a small size. Any thread.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <gdk/gdk.h>

#include "settings_window/objects.h"

namespace settings_window {

// In pixels. Enough for screens of two pixels per point.
constexpr int previewWidth = 320;
constexpr int previewHeight = 200;

struct PreviewFrame {
  // Of the size above, which the frame fills.
  Object<GdkTexture> texture;
  std::chrono::duration<double> delay{};
};

// Decodes the GIF's first frames, at most count. Returns none if the file cannot be read or
// decoded. Decodes one file at a time; others wait.
std::vector<PreviewFrame> previewFrames(const std::string& path, int count);

}  // namespace settings_window
