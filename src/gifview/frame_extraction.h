// Brings the frame cache of a view's GIF up to date and holds the results for playback. The getters
// work on any thread. Failures to write are silent.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "gifview/frame_cache.h"
#include "platform/data.h"
#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class FrameExtraction {
 public:
  // location is the one whose settings are read; nullptr means the defaults.
  explicit FrameExtraction(const Location* location) : location_(location) {}

  // Reads the GIF and rebuilds its cache, unless the cache was made from the same bytes. Posts
  // frameFoundNotification for each decoded frame, and didStartAnimatingNotification after a
  // rebuilding; if the cache was valid, only the latter, and only if the settings select the
  // location. Returns false, with only the layout changed, if the GIF cannot be read. Background
  // threads.
  bool extract(const std::string& path);

  // Writes every frame of the GIF again, with the blur that is set now, even if its radius is 0.
  // Posts frameFoundNotification for each decoded frame, and at the end blurDidFinishNotification,
  // even if the GIF cannot be read. Does nothing before the first extraction. Background threads.
  void rewriteFrames() const;

  FrameCacheLayout layout() const { return layout_.load(); }
  FrameDurations durations() const { return durations_.load(); }
  // Returns the number of images in the GIF during an extraction, and the length of the list of
  // delays after it.
  std::int32_t frameCount() const { return animationNumFrames_; }

 private:
  void rebuildFrameCache(const FrameCacheLayout& layout, const platform::DataRef& gif);

  const Location* const location_;
  Guarded<FrameCacheLayout> layout_;
  Guarded<FrameDurations> durations_;
  std::atomic<std::int32_t> animationNumFrames_ = 0;
};

}  // namespace lumora
