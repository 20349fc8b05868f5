// A view that shows an animated wallpaper: it turns a GIF into a frame cache once, and plays the
// frames from the cache with the display's refreshes. Functions that name no thread work on any.
// Failures are silent.
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
  // The tag that marks animated views among a host view's subviews.
  static constexpr int animatedViewTag = 1337;

  // Creates a view for "SHARED", "LOCKSCREEN" or "HOMESCREEN" and waits up to five seconds for the
  // main thread to set it up. If that takes longer, the view is set up later and imageView() is
  // nullptr until then. Never returns nullptr. Not on the main thread. The view does not follow
  // changes of its settings before observeSettings of live_settings.h.
  static std::shared_ptr<LWGIFView> initWithIdentifier(const std::string& identifier);

  // Brings the frame cache of this GIF up to date and waits up to five seconds for that; if it
  // takes longer, it continues in the background. Does nothing if there is no such file or if the
  // mode does not use this view; waits the whole five seconds if the file cannot be read. Does not
  // start playback.
  void startAnimationWithGIFAtPath(const std::string& path);

  // Stops playback. The current frame stays visible, and resuming continues from it. A start that
  // is still queued happens all the same.
  void pauseAnimation();
  // Starts playback from a block on the main queue. Of two starts queued at once, the first leaves
  // a link that nothing stops.
  void resumeAnimation();

  // Sets the content mode of the image view, not of this view, from a block on the main queue.
  void setContentMode(platform::UIViewContentMode mode) override;

  // Adds the values of description_keys.h. Main thread.
  void describe(platform::ViewDescription& target) const override;

  const std::string& identifier() const { return identifier_; }
  // Returns nullptr if the identifier is unknown.
  const Location* location() const { return location_; }
  FrameCacheLayout frameCache() const { return extraction_.layout(); }
  // See FrameExtraction::rewriteFrames. Background threads.
  void rewriteFrames() const { extraction_.rewriteFrames(); }
  // Sets the speed as a factor of the GIF's; see PlaybackClock::tick for 0 and less.
  void setSpeedModifier(float speed) { speedModifier_ = speed; }
  // Returns nullptr until the view is set up. Main thread.
  const std::shared_ptr<platform::UIImageView>& imageView() const { return imageView_; }

 private:
  explicit LWGIFView(const std::string& identifier);
  void setUp(float alpha);
  void serveMessages();
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
