#include "placement/wallpaper_listener.h"

#include <atomic>

#include "threads/exception_barrier.h"

namespace lumora {
namespace {

std::atomic<LWWallpaperListener::VisibilityHandler> visibilityHandler = nullptr;

// Does nothing if the listener observes another view, or none.
void remove(const LWWallpaperListener& listener, platform::UIView& object) {
  platform::swallowingNSException(
      [&] { object.removeObserver(listener, LWWallpaperListener::keyPath); });
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
  if (const auto old = newest.load(); old && object) remove(*old, *object);
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
