// Observes when the host hides and shows its wallpaper views, on behalf of gating.h.
#pragma once

#include <memory>
#include <string_view>

#include "platform/key_value_observing.h"
#include "platform/view.h"
#include "settings/locations.h"
#include "threads/guarded.h"

namespace lumora {

class LWWallpaperListener;
// The newest listener of a location; nullptr if none has been created.
using ListenerGlobal = GuardedGlobal<std::shared_ptr<LWWallpaperListener>>;

class LWWallpaperListener final : public platform::KeyValueObserver {
 public:
  static constexpr auto keyPath = "hidden";

  // Called with the location of a host view that was shown or hidden, or with Unknown if the view's
  // tag names none, on the thread that changed it. Exceptions are dropped.
  using VisibilityHandler = void (*)(ScreenLocation location, bool isVisible);
  // Sets the handler of all listeners, which do nothing without one. Any thread.
  static void setVisibilityHandler(VisibilityHandler handler);

  // Creates a new listener, stores it in newest and registers it with object, unless that is
  // nullptr. The old listener is removed if it observes this object; if it observes another view,
  // it stays until that view is destroyed. On tweakQueue.
  static void addListenerToObject(const std::shared_ptr<platform::UIView>& object,
                                  ListenerGlobal& newest);

  void observeValueForKeyPath(std::string_view changedKeyPath, platform::UIView& object,
                              const void* context) override;
};

}  // namespace lumora
