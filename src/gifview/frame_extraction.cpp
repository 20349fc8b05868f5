#include "gifview/frame_extraction.h"

#include <vector>

#include "gifview/blur.h"
#include "gifview/gif_frame_delay.h"
#include "gifview/view_settings.h"
#include "platform/autorelease_pool.h"
#include "platform/image_source.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using platform::CGImageSource;
using platform::DarwinNotifyCenter;
using platform::ImageRef;

}  // namespace

bool FrameExtraction::extract(const std::string& path) {
  const FrameCacheLayout layout(path);
  layout_.store(layout);
  const auto gif = platform::NSData::dataWithContentsOfFile(path);
  if (!gif) return false;
  const bool wasValid = isFrameCacheValid(layout, *gif);
  if (!wasValid) rebuildFrameCache(layout, gif);
  const bool isSelected = location_ != nullptr && isSelectedInSettings(*location_);
  if (!wasValid || isSelected) DarwinNotifyCenter::post(didStartAnimatingNotification);
  const FrameDurations durations = loadFrameDurations(layout);
  durations_.store(durations);
  animationNumFrames_ = durations ? static_cast<std::int32_t>(durations->size()) : 0;
  // A display link that skips refreshes has to look at the new durations.
  addToMainQueue([] {});
  return true;
}

// The loop reads the number of frames each time, because two extractions for one view share it.
void FrameExtraction::rebuildFrameCache(const FrameCacheLayout& layout,
                                        const platform::DataRef& gif) {
  prepareFrameCache(layout);
  auto source = CGImageSource::createWithData(gif);
  if (!source) return;
  animationNumFrames_ = source->count();
  std::vector<double> durations;
  for (std::int32_t index = 0; index < animationNumFrames_; ++index) {
    const platform::NSAutoreleasePool pool;
    ImageRef image = source->createImageAtIndex(index);
    if (!image) continue;
    DarwinNotifyCenter::post(frameFoundNotification);
    durations.push_back(CGImageSourceGetGifFrameDelay(*source, index));
    const float blur = blurOf(location_);
    if (blur > 0) image = blurImageWithRadius(image, blurRadius(blur));
    writeFrame(layout, index, image);
  }
  writeFrameDurations(layout, durations);
}

void FrameExtraction::rewriteFrames() const {
  const std::int32_t radius = blurRadius(blurOf(location_));
  const FrameCacheLayout layout = layout_.load();
  if (layout.fullGIFPath.empty()) return;
  const auto gif = platform::NSData::dataWithContentsOfFile(layout.fullGIFPath);
  const auto source = gif ? CGImageSource::createWithData(gif) : nullptr;
  const std::int32_t count = source ? source->count() : 0;
  for (std::int32_t index = 0; index < count; ++index) {
    const platform::NSAutoreleasePool pool;
    const ImageRef image = source->createImageAtIndex(index);
    if (!image) continue;
    DarwinNotifyCenter::post(frameFoundNotification);
    writeFrame(layout, index, blurImageWithRadius(image, radius));
  }
  DarwinNotifyCenter::post(blurDidFinishNotification);
}

}  // namespace lumora
