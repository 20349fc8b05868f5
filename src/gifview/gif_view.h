// The view that shows one animated wallpaper: it turns a GIF into a frame cache once and plays the
// frames from there on the display's refresh. Where a function names no thread, any will do.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "gifview/frame_cache.h"
#include "gifview/playback_clock.h"
#include "platform/display_link.h"
#include "platform/image_view.h"
#include "platform/view.h"
#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class LWGIFView final : public platform::UIView, private FrameExtractionClient {
 public:
  // The tag by which an animated view is found among a host view's subviews.
  static constexpr int animatedViewTag = 1337;

  // Makes a view for "SHARED", "LOCKSCREEN" or "HOMESCREEN" and waits up to five seconds for the
  // main thread to set it up, so it is not to be called there.
  static std::shared_ptr<LWGIFView> initWithIdentifier(const std::string& identifier);

  // Makes the frame cache of this GIF current, unless the settings have no use for this view, and
  // waits for that up to five seconds; what takes longer goes on in the background. Starts no
  // playback.
  void startAnimationWithGIFAtPath(const std::string& path);

  // The picture stays; a resume continues where the pause began.
  void pauseAnimation();
  // Starts the display link from the main queue.
  void resumeAnimation();

  // Forwarded to the image view on the main queue; this view's own mode stays.
  void setContentMode(platform::UIViewContentMode mode) override;

  void describe(platform::ViewDescription& description) const override;

  const std::string& identifier() const { return identifier_; }
  // nullptr if the identifier is none of the three.
  const Location* location() const { return location_; }
  FrameCacheLayout frameCache() const { return frameCache_.load(); }
  void setSpeedModifier(float speed) { speedModifier_ = speed; }
  // Main thread; nullptr until the set-up has run.
  const std::shared_ptr<platform::UIImageView>& imageView() const { return imageView_; }

 private:
  explicit LWGIFView(const std::string& identifier);
  void setUp(float alpha);
  void serveMessages();
  void observeNotifications();
  // Returns true if the caller need not wait any longer.
  bool extract(const std::string& path);
  bool isSelectedInSettings() const;
  void startDisplayLink();
  void stopDisplayLink();
  void update(const platform::CADisplayLink& link);
  void startNextCycle();
  void showFrame(std::int32_t index);
  std::shared_ptr<LWGIFView> self();

  void setFrameCount(std::int32_t count) override;
  std::int32_t frameCount() const override;
  void frameFound() override;
  float blur() override;

  const std::string identifier_;
  const Location* const location_;
  std::shared_ptr<platform::UIImageView> imageView_;
  Guarded<std::shared_ptr<platform::CADisplayLink>> displayLink_;

  // Written by the extraction, read by playback.
  Guarded<FrameCacheLayout> frameCache_;
  Guarded<FrameDurations> frameDurations_;
  std::atomic<std::int32_t> animationNumFrames_ = 0;
  std::atomic<float> speedModifier_ = 1;

  // Playback; main thread.
  PlaybackClock clock_;
  bool isNextCycleQueued_ = false;
  std::int32_t shownFrame_ = -1;
  long long framesShown_ = 0;
};

}  // namespace lumora
