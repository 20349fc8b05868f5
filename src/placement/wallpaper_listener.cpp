#include "placement/wallpaper_listener.h"

#include <atomic>

#include "threads/exception_barrier.h"

namespace lumora {
namespace {

std::atomic<LWWallpaperListener::VisibilityHandler> visibilityHandler = nullptr;

void removeOldListener(const std::shared_ptr<platform::UIView>& object, ListenerGlobal& newest) {
  const auto old = newest.load();
  if (!old) return;
  const bool removed = platform::swallowingNSException([&] {
    if (object) object->removeObserver(*old, LWWallpaperListener::keyPath);
  });
  if (removed) newest.store(nullptr);
}

ScreenLocation locationOfTag(int tag) {
  const Location* location = locationWithTag(tag);
  return location == nullptr ? ScreenLocation::Unknown : location->id;
}

}  // namespace

void LWWallpaperListener::setVisibilityHandler(VisibilityHandler handler) {
  visibilityHandler = handler;
}

void LWWallpaperListener::addListenerToObject(const std::shared_ptr<platform::UIView>& object,
                                              ListenerGlobal& newest) {
  removeOldListener(object, newest);
  auto listener = std::make_shared<LWWallpaperListener>();
  newest.store(listener);
  // The context only has to be a distinct address for each location.
  if (object) object->addObserver(listener, keyPath, &newest);
}

void LWWallpaperListener::observeValueForKeyPath(std::string_view /*changedKeyPath*/,
                                                 platform::UIView& object,
                                                 const void* /*context*/) {
  const VisibilityHandler handler = visibilityHandler;
  if (handler == nullptr) return;
  stoppingExceptions([&] { handler(locationOfTag(object.tag()), !object.hidden()); });
}

}  // namespace lumora
