// The frame cache of a GIF: a directory with a copy of the GIF, a PNG file for each frame and the
// list of delays. Background threads. Failures to write are silent: the file is missing then, or
// stays as it was.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "gifview/frame_durations.h"
#include "platform/data.h"
#include "platform/image.h"

namespace lumora {

// The paths in the cache of "/dir/NAME.gif", which is the directory "/dir/NAME".
struct FrameCacheLayout {
  // Makes a layout for no GIF, with empty paths.
  FrameCacheLayout() = default;
  explicit FrameCacheLayout(const std::string& gifPath);

  // "/dir/NAME/NAME_3.png" for index 3.
  std::string framePath(std::int32_t index) const;
  // "/dir/NAME/NAME_durations.plist".
  std::string durationsPath() const;

  // "/dir/NAME.gif".
  std::string fullGIFPath;
  // "/dir/NAME".
  std::string GIFDirectory;
  // "NAME".
  std::string baseGIFName;
  // "/dir/NAME/NAME": a copy of the GIF from which the cache was made.
  std::string savedGIFPath;
};

// Returns true if the cache's copy of the GIF equals these bytes. The cache may still be
// incomplete, if its making was interrupted.
bool isFrameCacheValid(const FrameCacheLayout& layout, const platform::NSData& gif);

// Replaces the cache directory by one that only contains a copy of the GIF.
void prepareFrameCache(const FrameCacheLayout& layout);

// Writes a frame's file, replacing an old one atomically. Does nothing if image is nullptr.
void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image);

// Writes the list of delays in seconds, which completes the cache. A frame that could not be
// decoded has no delay in it, although the later frames keep their numbers.
void writeFrameDurations(const FrameCacheLayout& layout, const std::vector<double>& durations);

// Returns the list of delays in the cache, or nullptr if it cannot be read.
FrameDurations loadFrameDurations(const FrameCacheLayout& layout);

}  // namespace lumora
