// Brings the frame cache of a view's GIF up to date and holds the results for playback. The getters
// work on any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "gifview/frame_cache.h"
#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class FrameExtraction final : private FrameExtractionClient {
 public:
  // location is the one whose settings are read; nullptr means the defaults.
  explicit FrameExtraction(const Location* location) : location_(location) {}

  // Reads the GIF and rebuilds its cache, unless the cache was made from the same bytes. Posts
  // notifications about its progress to the settings program. Returns false, with only the layout
  // changed, if the GIF cannot be read. Background threads.
  bool extract(const std::string& path);

  FrameCacheLayout layout() const { return layout_.load(); }
  FrameDurations durations() const { return durations_.load(); }
  // Returns the number of images in the GIF during an extraction, and the length of the list of
  // delays after it.
  std::int32_t frameCount() const override { return animationNumFrames_; }

 private:
  bool isSelectedInSettings() const;
  void setFrameCount(std::int32_t count) override { animationNumFrames_ = count; }
  void frameFound() override;
  float blur() override;

  const Location* const location_;
  Guarded<FrameCacheLayout> layout_;
  Guarded<FrameDurations> durations_;
  std::atomic<std::int32_t> animationNumFrames_ = 0;
};

}  // namespace lumora
