#include "gifview/live_settings.h"

#include "gifview/gif_view.h"
#include "gifview/view_settings.h"
#include "settings/settings_store.h"
#include "threads/queues.h"

namespace lumora {
namespace {

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
  runInBackground([view] { view->rewriteFrames(); });
}

void removeUnneededViews(const std::shared_ptr<LWGIFView>& view) {
  addToMainQueue([view] {
    if (!isUnneeded(*view)) return;
    view->removeFromSuperview();
    setPreferencesObjectKey("FALSE", view->identifier() + "_WALLPAPER_SET");
  });
}

}  // namespace lumora
