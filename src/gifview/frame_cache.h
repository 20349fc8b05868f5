// The frame cache of a GIF: a directory with a saved copy of the GIF, one PNG per frame and the
// list of delays. Background threads; all failures are silent.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "gifview/playback_clock.h"
#include "platform/image.h"
#include "platform/image_source.h"

namespace lumora {

// Where a GIF's cache lies: beside the GIF, under its path without extension.
struct FrameCacheLayout {
  // The layout for no GIF yet.
  FrameCacheLayout() = default;
  explicit FrameCacheLayout(const std::string& gifPath);

  std::string framePath(std::int32_t index) const;
  std::string durationsPath() const;

  std::string fullGIFPath;
  std::string GIFDirectory;
  std::string baseGIFName;
  std::string savedGIFPath;
};

// Receives progress during extraction. Called on the extracting thread.
class FrameExtractionClient {
 public:
  virtual ~FrameExtractionClient() = default;
  // How many images the GIF has; what frameCount gives from then on decides when to stop.
  virtual void setFrameCount(std::int32_t count) = 0;
  virtual std::int32_t frameCount() const = 0;
  virtual void frameFound() = 0;
  // The blur setting for the frame at hand; frames stay sharp unless it is greater than 0.
  virtual float blur() = 0;
};

// Whether the cache was made from exactly these bytes.
bool isFrameCacheValid(const FrameCacheLayout& layout, const platform::NSData& gif);

// Replaces the cache directory whole. The saved copy comes first; frames that cannot be decoded are
// left out, with their numbers, while the list of delays closes up.
void rebuildFrameCache(const FrameCacheLayout& layout, const platform::DataRef& gif,
                       FrameExtractionClient& client);

// Writes one frame's file, replacing the old one atomically; of no picture, nothing.
void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image);

// The list of delays as it is on disk; nullptr if it cannot be read.
FrameDurations loadFrameDurations(const FrameCacheLayout& layout);

}  // namespace lumora
