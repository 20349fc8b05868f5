// The wallpapers: the class "SBWallpaperController" with its one instance, and the class
// "SBFWallpaperView" of its views. Main thread.
#pragma once

#include <memory>

#include "host/home_screen/wallpaper_view.h"
#include "platform/linux/views/strong_ivar.h"

namespace host {

// The screens on which the wallpaper can be seen at the moment.
struct WallpaperVisibility {
  bool onLockScreen = false;
  bool onHomeScreen = false;
};

class WallpaperController {
 public:
  // Registers both classes and makes the instance, which lives as long as the process. Call it
  // once.
  static void registerClasses();
  static WallpaperController& instance();

  // Makes the shared wallpaper as a subview of container.
  void start(const std::shared_ptr<platform::UIView>& container);
  void layOut(platform::CGSize screen);
  void setVisibility(WallpaperVisibility visibility);
  // Sets "hidden" of every wallpaper to its value again, which notifies the observers.
  void reportVisibility();

  // Makes the wallpaper that is shown follow its animation, and returns a glimpse of it; nullptr if
  // none is shown. See WallpaperView::follow.
  std::shared_ptr<const Glimpse> follow(const WallpaperView::Choice& choice, double scale) const;

  // Switch to one wallpaper for both screens, or one for each. They make new views and release the
  // old ones, or do nothing if that is the case already.
  void updateShared();
  void updateSeparate();

 private:
  struct Object;
  WallpaperController();
  std::shared_ptr<platform::UIView> makeView(artwork::Still still, bool isVisible);
  void replace(platform::backend::StrongIvar& variable,
               const std::shared_ptr<platform::UIView>& view);
  void applyVisibility(platform::backend::StrongIvar& variable, bool isVisible) const;
  bool sharedIsVisible() const { return visibility_.onLockScreen || visibility_.onHomeScreen; }

  std::unique_ptr<Object> object_;
  std::shared_ptr<platform::UIView> container_;
  platform::CGSize screen_;
  WallpaperVisibility visibility_;
};

}  // namespace host
