#include "hooks/wallpaper_view_dealloc.h"

#include "placement/wallpaper_listener.h"
#include "threads/exception_barrier.h"

namespace lumora {
namespace {

void removeFirstListener(platform::UIView& view) {
  const auto listener = std::dynamic_pointer_cast<LWWallpaperListener>(view.firstObserver());
  if (listener) view.removeObserver(*listener, LWWallpaperListener::keyPath);
}

}  // namespace

void (*previousWallpaperViewDealloc)(platform::id self, platform::SEL selector) = nullptr;

void deallocWallpaperView(platform::id self, platform::SEL selector) {
  stoppingExceptions([self] {
    if (const auto view = platform::UIView::viewOfObject(self)) removeFirstListener(*view);
  });
  previousWallpaperViewDealloc(self, selector);
}

}  // namespace lumora
