// The frame cache of a GIF: a directory with a copy of the GIF, a PNG file for each frame and the
// list of delays. Background threads. Failures to write are silent: the file is missing then, or
// stays as it was.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "gifview/frame_durations.h"
#include "platform/image.h"
#include "platform/image_source.h"

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

// Controls an extraction and receives its progress, on the extracting thread.
class FrameExtractionClient {
 public:
  virtual ~FrameExtractionClient() = default;
  // Called once with the number of images in the GIF.
  virtual void setFrameCount(std::int32_t count) = 0;
  // Returns the number of frames after which the extraction ends. Called before each frame, because
  // two extractions for one view share the number.
  virtual std::int32_t frameCount() const = 0;
  // Called for each decoded frame, before it is written.
  virtual void frameFound() = 0;
  // Returns the blur setting for the next frame, which is not blurred if this is 0 or less.
  virtual float blur() = 0;
};

// Returns true if the cache's copy of the GIF equals these bytes. The cache may still be
// incomplete, if its making was interrupted.
bool isFrameCacheValid(const FrameCacheLayout& layout, const platform::NSData& gif);

// Replaces the whole cache directory. If the bytes are not an image, the new one only contains
// their copy. A frame that cannot be decoded has no file, and the other frames keep their numbers,
// but the list of delays has no gap. Requires gif, which is the contents of layout.fullGIFPath, not
// to be nullptr.
void rebuildFrameCache(const FrameCacheLayout& layout, const platform::DataRef& gif,
                       FrameExtractionClient& client);

// Writes a frame's file, replacing an old one atomically. Does nothing if image is nullptr.
void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image);

// Returns the list of delays in the cache, or nullptr if it cannot be read.
FrameDurations loadFrameDurations(const FrameCacheLayout& layout);

}  // namespace lumora
