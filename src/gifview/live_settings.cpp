#include "gifview/live_settings.h"

#include "gifview/blur.h"
#include "gifview/gif_view.h"
#include "gifview/view_settings.h"
#include "platform/autorelease_pool.h"
#include "platform/file_manager.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using platform::CGImageSource;
using platform::DarwinNotifyCenter;

void rewriteFrame(const FrameCacheLayout& layout, CGImageSource& source, std::int32_t index,
                  float blur) {
  const platform::NSAutoreleasePool pool;
  const auto image = source.createImageAtIndex(index);
  if (!image) return;
  DarwinNotifyCenter::post(frameFoundNotification);
  writeFrame(layout, index, blurImageWithRadius(image, blurRadius(blur)));
}

void rewriteFrames(const LWGIFView& view) {
  const float blur = blurOf(view.location());
  const FrameCacheLayout layout = view.frameCache();
  if (layout.fullGIFPath.empty()) return;
  const auto gif = platform::NSData::dataWithContentsOfFile(layout.fullGIFPath);
  const auto source = gif ? CGImageSource::createWithData(gif) : nullptr;
  const std::int32_t count = source ? source->count() : 0;
  for (std::int32_t index = 0; index < count; ++index) rewriteFrame(layout, *source, index, blur);
  DarwinNotifyCenter::post(blurDidFinishNotification);
}

// No view is unneeded in a mode that is neither shared nor separate.
bool isUnneeded(const LWGIFView& view) {
  const Location* location = view.location();
  const bool isShared = location != nullptr && location->mode == WallpaperMode::Shared;
  return wallpaperMode() == (isShared ? WallpaperMode::Separate : WallpaperMode::Shared);
}

}  // namespace

void updateGIFSpeed(const std::shared_ptr<LWGIFView>& view) {
  view->setSpeedModifier(speedOf(view->location()));
}

void updateGIFAlpha(const std::shared_ptr<LWGIFView>& view) {
  const float alpha = alphaOf(view->location());
  addToMainQueue([view, alpha] {
    if (const auto& imageView = view->imageView()) imageView->setAlpha(alpha);
  });
}

void updateGIFBlur(const std::shared_ptr<LWGIFView>& view) {
  runInBackground([view] { rewriteFrames(*view); });
}

void removeUnneededViews(const std::shared_ptr<LWGIFView>& view) {
  addToMainQueue([view] {
    if (!isUnneeded(*view)) return;
    view->removeFromSuperview();
    setPreferencesObjectKey("FALSE", view->identifier() + "_WALLPAPER_SET");
  });
}

}  // namespace lumora
