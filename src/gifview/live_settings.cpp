#include "gifview/live_settings.h"

#include <string>
#include <utility>

#include "gifview/gif_view.h"
#include "gifview/view_settings.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "threads/exception_barrier.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using platform::DarwinNotifyCenter;

// Separate from the center of the control notifications, which are registered without an observer:
// observeSettings removes such registrations.
DarwinNotifyCenter& viewNotifyCenter() {
  static auto* center = new DarwinNotifyCenter;
  return *center;
}

// No view is unneeded in a mode that is neither shared nor separate.
bool isUnneeded(const LWGIFView& view) {
  const Location* location = view.location();
  const bool isShared = location != nullptr && location->mode == WallpaperMode::Shared;
  return wallpaperMode() == (isShared ? WallpaperMode::Separate : WallpaperMode::Shared);
}

std::string wallpaperSetKey(const LWGIFView& view) {
  const Location* location = view.location();
  return location == nullptr ? view.identifier() + "_WALLPAPER_SET" : location->wallpaperSetKey;
}

}  // namespace

void observeSettings(const std::shared_ptr<LWGIFView>& view) {
  using Update = void (*)(const std::shared_ptr<LWGIFView>&);
  constexpr std::pair<const char*, Update> updates[] = {
      {speedNeedsUpdatingNotification, updateGIFSpeed},
      {alphaNeedsUpdatingNotification, updateGIFAlpha},
      {blurNeedsUpdatingNotification, updateGIFBlur},
      {removeUnneededViewNotification, removeUnneededViews},
  };
  // Required before a view registers. It removes nothing: every registration with this center has a
  // view as its observer.
  viewNotifyCenter().removeEveryObserver(nullptr);
  for (const auto& [name, handler] : updates) {
    viewNotifyCenter().addObserver(
        view.get(), name, [weak = std::weak_ptr(view), update = handler](const std::string&) {
          if (auto observing = weak.lock()) stoppingExceptions([&] { update(observing); });
        });
  }
}

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
  runInBackground([view] { view->rewriteFrames(); });
}

void removeUnneededViews(const std::shared_ptr<LWGIFView>& view) {
  addToMainQueue([view] {
    if (!isUnneeded(*view)) return;
    view->removeFromSuperview();
    setPreferencesObjectKey("FALSE", wallpaperSetKey(*view));
  });
}

}  // namespace lumora
