// The view that shows one animated wallpaper: it turns a GIF into a frame cache once and plays the
// frames from there on the display's refresh. Where a function names no thread, any will do.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "gifview/display_link_holder.h"
#include "gifview/frame_extraction.h"
#include "gifview/playback_clock.h"
#include "platform/image_view.h"
#include "platform/view.h"
#include "settings/locations.h"

namespace lumora {

class LWGIFView final : public platform::UIView {
 public:
  // The tag by which an animated view is found among a host view's subviews.
  static constexpr int animatedViewTag = 1337;

  // Makes a view for "SHARED", "LOCKSCREEN" or "HOMESCREEN" and waits up to five seconds for the
  // main thread to set it up; if that takes longer, the set-up runs late and imageView() is nullptr
  // until then. Not on the main thread.
  static std::shared_ptr<LWGIFView> initWithIdentifier(const std::string& identifier);

  // Makes the frame cache of this GIF current, unless the mode does not use this view, and waits up
  // to five seconds for that; what takes longer goes on in the background. Starts no playback.
  void startAnimationWithGIFAtPath(const std::string& path);

  // The frame stays visible; resuming continues from it.
  void pauseAnimation();
  // Starts the display link from the main queue.
  void resumeAnimation();

  // Sets the image view's mode, from the main queue; this view's own mode stays.
  void setContentMode(platform::UIViewContentMode mode) override;

  // With the names of description_keys.h.
  void describe(platform::ViewDescription& target) const override;

  const std::string& identifier() const { return identifier_; }
  // nullptr if the identifier is none of the three.
  const Location* location() const { return location_; }
  FrameCacheLayout frameCache() const { return extraction_.layout(); }
  // 1 is the speed of the GIF; see PlaybackClock::tick for 0 and below.
  void setSpeedModifier(float speed) { speedModifier_ = speed; }
  // Main thread; nullptr until the set-up has run.
  const std::shared_ptr<platform::UIImageView>& imageView() const { return imageView_; }

 private:
  explicit LWGIFView(const std::string& identifier);
  void setUp(float alpha);
  void serveMessages();
  void observeNotifications();
  void startDisplayLink();
  void update(const platform::CADisplayLink& link);
  void startNextCycle();
  void showFrame(std::int32_t index);
  std::shared_ptr<LWGIFView> self();

  const std::string identifier_;
  const Location* const location_;
  std::shared_ptr<platform::UIImageView> imageView_;
  DisplayLinkHolder displayLink_;
  FrameExtraction extraction_;
  std::atomic<float> speedModifier_ = 1;

  // Playback; main thread.
  PlaybackClock clock_;
  bool isNextCycleQueued_ = false;
  std::int32_t shownFrame_ = -1;
  long long framesShown_ = 0;
};

}  // namespace lumora
