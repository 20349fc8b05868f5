// Makes the frame cache of a view's GIF current, and holds what playback needs of it: written by
// the extraction on a background thread, read on any.
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
  // location: whose settings count; nullptr for none.
  explicit FrameExtraction(const Location* location) : location_(location) {}

  // Reads the GIF and rebuilds its cache unless that was made from the same bytes, with
  // notifications to the settings program on the way. Returns false, with nothing but the layout
  // changed, if the GIF cannot be read. Background threads.
  bool extract(const std::string& path);

  FrameCacheLayout layout() const { return layout_.load(); }
  FrameDurations durations() const { return durations_.load(); }
  // The images of the GIF while they are extracted, then the length of the list of delays.
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
