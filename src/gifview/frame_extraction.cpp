#include "gifview/frame_extraction.h"

#include "gifview/view_settings.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"

namespace lumora {

using platform::DarwinNotifyCenter;

bool FrameExtraction::extract(const std::string& path) {
  const FrameCacheLayout layout(path);
  layout_.store(layout);
  const auto gif = platform::NSData::dataWithContentsOfFile(path);
  if (!gif) return false;
  const bool wasValid = isFrameCacheValid(layout, *gif);
  if (!wasValid) rebuildFrameCache(layout, gif, *this);
  if (!wasValid || isSelectedInSettings()) DarwinNotifyCenter::post(didStartAnimatingNotification);
  const FrameDurations durations = loadFrameDurations(layout);
  durations_.store(durations);
  animationNumFrames_ = durations ? static_cast<std::int32_t>(durations->size()) : 0;
  return true;
}

// Returns true if this view's location is the one selected in the settings.
bool FrameExtraction::isSelectedInSettings() const {
  if (location_ == nullptr || location_->mode != wallpaperMode()) return false;
  return location_->locationIndex < 0 || location_->locationIndex == getLocationIndex();
}

void FrameExtraction::frameFound() {
  DarwinNotifyCenter::post(frameFoundNotification);
}

float FrameExtraction::blur() {
  return blurOf(location_);
}

}  // namespace lumora
