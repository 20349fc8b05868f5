// The frame cache of a GIF: a directory with a saved copy of the GIF, one PNG per frame and the
// list of delays. Background threads; all failures are silent.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "gifview/frame_durations.h"
#include "platform/image.h"
#include "platform/image_source.h"

namespace lumora {

// Where the cache of "/dir/NAME.gif" is: in "/dir/NAME".
struct FrameCacheLayout {
  // The layout for no GIF yet: all paths are empty.
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
  // "/dir/NAME/NAME": the copy of the GIF from which the cache was made.
  std::string savedGIFPath;
};

// Receives progress during extraction. Called on the extracting thread.
class FrameExtractionClient {
 public:
  virtual ~FrameExtractionClient() = default;
  // Called once with the number of images in the GIF.
  virtual void setFrameCount(std::int32_t count) = 0;
  // Where the extraction ends; asked again before each frame, because two extractions for one view
  // share the number.
  virtual std::int32_t frameCount() const = 0;
  virtual void frameFound() = 0;
  // The blur setting for the next frame; frames stay sharp unless it is greater than 0.
  virtual float blur() = 0;
};

// Returns true if the cache was made from exactly these bytes.
bool isFrameCacheValid(const FrameCacheLayout& layout, const platform::NSData& gif);

// Replaces the whole cache directory. The saved copy is written first. Frames that cannot be
// decoded have no file, though the numbers of the others stay; the list of delays has no gaps.
void rebuildFrameCache(const FrameCacheLayout& layout, const platform::DataRef& gif,
                       FrameExtractionClient& client);

// Writes one frame's file, replacing the old one atomically. Does nothing if image is nullptr.
void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image);

// The list of delays as it is on disk; nullptr if it cannot be read.
FrameDurations loadFrameDurations(const FrameCacheLayout& layout);

}  // namespace lumora
